#include "HostileDescriptions.h"

#include "DeviceFixture.h"

namespace {

using Rows = QVector<HostileDescription>;

QByteArray number(int i)
{
    return QByteArray::number(i);
}

QByteArray integer(const QByteArray &name, const QByteArray &more)
{
    return "<Integer Name=\"" + name + "\">" + more + "</Integer>";
}

QByteArray constantInteger(const QByteArray &name, const QByteArray &more)
{
    return integer(name, "<Value>1</Value>" + more);
}

QByteArray element(const QByteArray &tag, const QByteArray &text)
{
    return '<' + tag + '>' + text + "</" + tag + '>';
}

QByteArray registerOf(const QByteArray &name, const QByteArray &address,
                      const QByteArray &length = "<Length>4</Length>",
                      const QByteArray &tag = "IntReg", const QByteArray &more = {})
{
    return '<' + tag + " Name=\"" + name + "\">" + address + length
        + "<AccessMode>RW</AccessMode><pPort>Device</pPort>" + more + "</" + tag + '>';
}

QByteArray withGood(const QByteArray &nodes)
{
    return describe(nodes + intReg("Good", 64));
}

/// Makes a node `name` that refers to `target` in one way.
struct ReferenceWay
{
    QByteArray tag; ///< as it stands in the message
    QByteArray label;
    QByteArray (*node)(const QByteArray &name, const QByteArray &target);
};

template<const char *Tag>
QByteArray constantWith(const QByteArray &name, const QByteArray &target)
{
    return constantInteger(name, element(Tag, target));
}

template<const char *Tag>
QByteArray entryWith(const QByteArray &name, const QByteArray &target)
{
    return "<Enumeration Name=\"" + name + "\"><EnumEntry Name=\"E\">" + element(Tag, target)
        + "<Value>1</Value></EnumEntry><Value>1</Value></Enumeration>";
}

template<const char *Tag>
QByteArray valueOf(const QByteArray &name, const QByteArray &target)
{
    return '<' + QByteArray(Tag) + " Name=\"" + name + "\"><pValue>" + target + "</pValue></" + Tag
        + '>';
}

template<const char *Tag>
QByteArray knife(const QByteArray &name, const QByteArray &target)
{
    return '<' + QByteArray(Tag) + " Name=\"" + name + "\"><pVariable Name=\"A\">" + target
        + "</pVariable><Formula>A+1</Formula></" + Tag + '>';
}

QByteArray converter(const QByteArray &name, const QByteArray &value, const QByteArray &variable,
                     const QByteArray &tag)
{
    return '<' + tag + " Name=\"" + name + "\"><pVariable Name=\"A.Max\">" + variable
        + "</pVariable><FormulaTo>FROM-A.Max</FormulaTo><FormulaFrom>TO+A.Max</FormulaFrom>"
          "<pValue>"
        + value + "</pValue></" + tag + '>';
}

constexpr char P_MIN[] = "pMin";
constexpr char P_MAX[] = "pMax";
constexpr char P_INC[] = "pInc";
constexpr char P_COPY[] = "pValueCopy";
constexpr char P_LOCKED[] = "pIsLocked";
constexpr char P_AVAILABLE[] = "pIsAvailable";
constexpr char P_IMPLEMENTED[] = "pIsImplemented";
constexpr char INTEGER[] = "Integer";
constexpr char BOOLEAN[] = "Boolean";
constexpr char FLOAT[] = "Float";
constexpr char INT_KNIFE[] = "IntSwissKnife";
constexpr char KNIFE[] = "SwissKnife";

const ReferenceWay REFERENCE_WAYS[] = {
    {"pValue", "Integer", valueOf<INTEGER>},
    {"pValue", "Boolean", valueOf<BOOLEAN>},
    {"pValue", "Float", valueOf<FLOAT>},
    {"pValue", "Converter",
     [](const QByteArray &name, const QByteArray &target) {
         return converter(name, target, "One", "IntConverter");
     }},
    {"pVariable", "Converter",
     [](const QByteArray &name, const QByteArray &target) {
         return converter(name, "One", target, "Converter");
     }},
    {"pVariable", "IntSwissKnife", knife<INT_KNIFE>},
    {"pVariable", "SwissKnife", knife<KNIFE>},
    {"pValueCopy", "Integer", constantWith<P_COPY>},
    {"pMin", "Integer", constantWith<P_MIN>},
    {"pMax", "Integer", constantWith<P_MAX>},
    {"pInc", "Integer", constantWith<P_INC>},
    {"pIsLocked", "Integer", constantWith<P_LOCKED>},
    {"pIsAvailable", "Integer", constantWith<P_AVAILABLE>},
    {"pIsImplemented", "Integer", constantWith<P_IMPLEMENTED>},
    {"pIsAvailable", "EnumEntry", entryWith<P_AVAILABLE>},
    {"pIsImplemented", "EnumEntry", entryWith<P_IMPLEMENTED>},
    {"pIndex", "Integer",
     [](const QByteArray &name, const QByteArray &target) {
         return integer(name, "<pIndex>" + target + "</pIndex><ValueDefault>3</ValueDefault>");
     }},
    {"pValueIndexed", "Integer",
     [](const QByteArray &name, const QByteArray &target) {
         return integer(name,
                        "<pIndex>One</pIndex><pValueIndexed Index=\"1\">" + target
                            + "</pValueIndexed><ValueDefault>3</ValueDefault>");
     }},
    {"pValueDefault", "Integer",
     [](const QByteArray &name, const QByteArray &target) {
         return integer(name,
                        "<pIndex>One</pIndex><ValueIndexed "
                        "Index=\"1\">3</ValueIndexed><pValueDefault>"
                            + target + "</pValueDefault>");
     }},
    {"pAddress", "IntReg",
     [](const QByteArray &name, const QByteArray &target) {
         return registerOf(name, element("pAddress", target));
     }},
    {"pIndex", "IntReg",
     [](const QByteArray &name, const QByteArray &target) {
         return registerOf(name, "<pIndex Offset=\"4\">" + target + "</pIndex>");
     }},
    {"pOffset", "IntReg",
     [](const QByteArray &name, const QByteArray &target) {
         return registerOf(name, "<pIndex pOffset=\"" + target.simplified() + "\">One</pIndex>");
     }},
    {"pLength", "IntReg",
     [](const QByteArray &name, const QByteArray &target) {
         return registerOf(name, "<Address>0</Address>", element("pLength", target));
     }},
    {"pAddress", "StructEntry",
     [](const QByteArray &name, const QByteArray &target) {
         return "<StructReg Comment=\"s\"><pAddress>" + target
             + "</pAddress><Length>4</Length><pPort>Device</pPort><StructEntry Name=\"" + name
             + "\"><Bit>1</Bit></StructEntry></StructReg>";
     }},
};

/// References that nobody follows to get a value.
const ReferenceWay MENTIONS[] = {
    {"pInvalidator", "Integer",
     [](const QByteArray &name, const QByteArray &target) {
         return constantInteger(name, element("pInvalidator", target));
     }},
    {"pSelected", "Integer",
     [](const QByteArray &name, const QByteArray &target) {
         return constantInteger(name, element("pSelected", target));
     }},
};

QByteArray circle(const ReferenceWay &way, int size)
{
    QByteArray nodes;
    for (int i = 0; i < size; ++i) {
        nodes += way.node("N" + number(i), "N" + number((i + 1) % size));
    }
    return withGood(nodes);
}

HostileDescription left(const QByteArray &name, const QByteArray &nodes, const QByteArray &reason,
                        const QByteArray &node = "N")
{
    HostileDescription row;
    row.name = name;
    row.make = [nodes] { return withGood(nodes); };
    row.leftOut = {{node, reason}};
    return row;
}

HostileDescription noted(const QByteArray &name, const QByteArray &nodes, const QByteArray &note,
                         qint64 value)
{
    HostileDescription row;
    row.name = name;
    row.make = [nodes] { return withGood(nodes); };
    row.live = {{"N", value}};
    row.note = note;
    return row;
}

HostileDescription refused(const QByteArray &name, const std::function<QByteArray()> &make,
                           const QByteArray &reason)
{
    HostileDescription row;
    row.name = name;
    row.make = make;
    row.refusal = reason;
    return row;
}

void addReferences(Rows &rows)
{
    struct Size
    {
        int count;
        const char *text;
    };
    const Size SIZES[] = {{1, "N0 -> N0"},
                          {2, "N0 -> N1 -> N0"},
                          {50, "N0 -> N1 -> N2 -> N3 -> N4 -> ... (45 more) -> N0"}};
    for (const ReferenceWay &way : REFERENCE_WAYS) {
        const QByteArray label = way.tag + " of " + way.label;
        for (const Size &size : SIZES) {
            HostileDescription row;
            row.name = "circle of " + number(size.count) + " through " + label;
            row.make = [&way, size] { return circle(way, size.count); };
            row.leftOut = {{"N0", size.text}, {"N" + number(size.count - 1), "circle"}};
            rows.append(row);
        }
        rows.append(left("missing " + label, way.node("N", "Nowhere"),
                         "its " + way.tag + " refers to Nowhere, which does not exist"));
        rows.append(left("empty " + label, way.node("N", way.tag == "pOffset" ? "?" : " "),
                         "its " + way.tag));
        rows.append(left("category as " + label, way.node("N", "Root"),
                         "its " + way.tag + " refers to Root, which has no value"));
    }
    // An inner formula is a node of its own, in the circle too.
    rows.append(left("circle through an inner formula",
                     registerOf("N",
                                "<IntSwissKnife Name=\"F\"><pVariable Name=\"A\">N</pVariable>"
                                "<Formula>A</Formula></IntSwissKnife>"),
                     "circle"));
    for (const ReferenceWay &way : MENTIONS) {
        for (const Size &size : SIZES) {
            HostileDescription row;
            row.name = "circle of " + number(size.count) + " through " + way.tag;
            row.make = [&way, size] { return circle(way, size.count); };
            row.live = {{"N0", 1}, {"N" + number(size.count - 1), 1}};
            rows.append(row);
        }
        rows.append(noted("missing " + way.tag, way.node("N", "Nowhere"),
                          "its " + way.tag + " refers to Nowhere", 1));
    }
}

void addDeep(Rows &rows)
{
    const auto chain = [](int length, const std::function<QByteArray(int)> &below) {
        QByteArray nodes = "<Integer Name=\"N0\"><Value>1</Value></Integer>";
        for (int i = 1; i < length; ++i) {
            nodes += integer("N" + number(i), below(i - 1)) + '\n';
        }
        return withGood(nodes);
    };
    HostileDescription deep;
    deep.name = "chain 200000 deep";
    deep.make = [chain] {
        return chain(200000, [](int i) { return element("pValue", "N" + number(i)); });
    };
    deep.leftOut = {{"N199999", "it needs N199998"}, {"N128", "deeper than 128"}};
    deep.live = {{"N127", 1}};
    rows.append(deep);
    HostileDescription large;
    large.isForCosts = true;
    large.name = "circle of 20000";
    large.make = [] { return circle(REFERENCE_WAYS[0], 20000); };
    large.leftOut = {{"N0", "(19995 more) -> N0"}, {"N19999", "circle"}};
    rows.append(large);
    HostileDescription wide;
    wide.name = "each uses the next twice, 40 levels";
    wide.make = [chain] {
        return chain(40, [](int i) {
            return element("pValue", "N" + number(i)) + element("pMin", "N" + number(i));
        });
    };
    wide.leftOut = {{"N39", "it needs"}, {"N16", "too many references"}};
    wide.live = {{"N10", 1}};
    rows.append(wide);
}

void addRegisters(Rows &rows)
{
    const QByteArray at0 = "<Address>0</Address>";
    const char *const LENGTHS[] = {"0",   "-1", "4294967300",          "9223372036854775807",
                                   "abc", "",   "18446744073709551616"};
    const char *const TAGS[] = {"IntReg", "FloatReg", "StringReg", "Register"};
    for (const char *length : LENGTHS) {
        for (const char *tag : TAGS) {
            rows.append(left(QByteArray(tag) + " of length " + length,
                             registerOf("N", at0, element("Length", length), tag), "ength"));
        }
    }
    rows.append(left("FloatReg of 5 bytes", registerOf("N", at0, "<Length>5</Length>", "FloatReg"),
                     "length of 5"));
    rows.append(left("no length", registerOf("N", at0, {}), "no length"));
    rows.append(left("no port",
                     "<IntReg Name=\"N\"><Address>0</Address><Length>4</Length></IntReg>",
                     "no port"));
    rows.append(left("port that is none", QByteArray(registerOf("N", at0)).replace("Device", "One"),
                     "its pPort refers to One"));
    const QByteArray masked = registerOf("N", at0, "<Length>4</Length>", "MaskedIntReg", "%");
    const auto bits = [&](const char *name, const QByteArray &text) {
        rows.append(left(name, QByteArray(masked).replace("%", text), "bits lie outside"));
    };
    bits("bit 200", "<Bit>200</Bit>");
    bits("bit -1", "<Bit>-1</Bit>");
    bits("MSB outside", "<LSB>0</LSB><MSB>32</MSB>");
    bits("LSB outside", "<LSB>32</LSB><MSB>0</MSB>");
    bits("MSB of 63 bits", "<LSB>0</LSB><MSB>9223372036854775807</MSB>");
    bits("no bits", {});
    rows.append(left("bit abc", QByteArray(masked).replace("%", "<Bit>abc</Bit>"), "no number"));
    rows.append(left("struct bit 200",
                     "<StructReg Comment=\"s\"><Address>0</Address><Length>4</Length><pPort>Device"
                     "</pPort><StructEntry Name=\"N\"><Bit>200</Bit></StructEntry></StructReg>",
                     "bits lie outside"));
    const auto address = [&](const char *name, const QByteArray &text, const QByteArray &reason) {
        rows.append(left(name, registerOf("N", text), reason));
    };
    address("register over the end of 64 bits", "<Address>0xFFFFFFFFFFFFFFFD</Address>",
            "beyond 64 bits");
    address("addresses that add up beyond 64 bits",
            "<Address>0xFFFFFFFFFFFFFFF0</Address><Address>0x10</Address>", "beyond 64 bits");
    address("address of 65 bits", "<Address>0x10000000000000000</Address>", "is no");
    address("negative address", "<Address>-4</Address>", "negative");
    address("address abc", "<Address>abc</Address>", "no number");
    address("offset abc", "<pIndex Offset=\"abc\">One</pIndex>", "no number");
}

void addNumbers(Rows &rows)
{
    rows.append(left("value abc", integer("N", "<Value>abc</Value>"), "\"abc\" is no number"));
    rows.append(left("empty value", integer("N", "<Value/>"), "no number"));
    rows.append(left("value 2^64", integer("N", "<Value>18446744073709551616</Value>"),
                     "no integer of 64 bits"));
    rows.append(left("value -2^63-1", integer("N", "<Value>-9223372036854775809</Value>"),
                     "no integer of 64 bits"));
    rows.append(left("bound abc", constantInteger("N", "<Max>abc</Max>"), "no number"));
    rows.append(left("no value", integer("N", "<Min>0</Min>"), "no value"));
    for (const char *text : {"NaN", "INF", "-INF", "1e999"}) {
        const QByteArray open = "<Float Name=\"N\">";
        rows.append(left(QByteArray("float value ") + text,
                         open + element("Value", text) + "</Float>", "is not finite"));
        HostileDescription bound;
        bound.name = QByteArray("float bound ") + text;
        bound.make = [open, text] {
            return withGood(open + "<Value>1</Value>" + element("Max", text) + "</Float>");
        };
        bound.note = "is not finite and counts as none";
        rows.append(bound);
    }
    rows.append(noted("all 64 bits", integer("N", "<Value>0xFFFFFFFFFFFFFFFF</Value>"), {}, -1));
    rows.append(noted("min above max", constantInteger("N", "<Min>9</Min><Max>2</Max>"),
                      "its Min is above its Max", 1));
    rows.append(noted("increment 0", constantInteger("N", "<Inc>0</Inc>"), "its Inc is not", 1));
    rows.append(noted("increment -5", constantInteger("N", "<Inc>-5</Inc>"), "its Inc is not", 1));
    rows.append(
        noted("spaces around a reference", integer("N", "<pValue> \n One\t</pValue>"), {}, 1));
    rows.append(noted("spaces around a name", integer(" N ", "<Value> 1\n</Value>"), {}, 1));
    rows.append(
        noted("Boolean in words", "<Boolean Name=\"N\"><Value>true</Value></Boolean>", {}, 1));
    rows.append(noted("character references", integer("N", "<Value>&#49;</Value>"), {}, 1));
}

void addFormulas(Rows &rows)
{
    const auto formula = [&rows](const char *name, const QByteArray &text, const char *reason) {
        rows.append(left(name, "<IntSwissKnife Name=\"N\">" + text + "</IntSwissKnife>", reason));
    };
    formula("formula missing", {}, "no Formula");
    formula("formula empty", "<Formula/>", "its Formula");
    formula("formula that is none", "<Formula>1+*2</Formula>", "its Formula");
    formula("formula with an unknown name", "<Formula>A+1</Formula>", "uses A");
    formula("formula of 100000 parentheses",
            element("Formula", QByteArray(100000, '(') + '1' + QByteArray(100000, ')')),
            "its Formula");
    formula("expressions in a circle",
            "<Expression Name=\"A\">B</Expression><Expression Name=\"B\">A</Expression>"
            "<Formula>A</Formula>",
            "leads into a circle: A -> B -> A");
    QByteArray doubling = "<Expression Name=\"E0\">1</Expression>"
                          "<Expression Name=\"E1\">1</Expression>";
    for (int i = 2; i < 60; ++i) {
        doubling += "<Expression Name=\"E" + number(i) + "\">E" + number(i - 1) + "+E"
            + number(i - 2) + "</Expression>";
    }
    formula("expressions that double", doubling + "<Formula>E59</Formula>", "uses too many");
    for (const char *name : {"Choice.Enum.B", "One.Enum.A"}) {
        const QByteArray variable(name);
        rows.append(left("entry in a formula that is none: " + variable,
                         "<Enumeration Name=\"Choice\"><EnumEntry Name=\"A\"><Value>1</Value>"
                         "</EnumEntry><Value>1</Value></Enumeration><IntSwissKnife Name=\"N\">"
                         "<pVariable Name=\""
                             + variable + "\">" + variable.left(variable.indexOf('.'))
                             + "</pVariable><Formula>" + variable + "</Formula></IntSwissKnife>",
                         "names no entry"));
    }
    rows.append(left("converter without FormulaFrom",
                     "<Converter Name=\"N\"><pValue>One</pValue></Converter>", "no FormulaFrom"));
    rows.append(left("argument of a converter in a knife",
                     "<SwissKnife Name=\"N\"><Formula>FROM+TO</Formula></SwissKnife>", "uses"));
}

void addNames(Rows &rows)
{
    rows.append(left("name twice",
                     integer("N", "<Value>1</Value>") + integer("N", "<Value>2</Value>"),
                     "the name stands for two nodes"));
    rows.append(
        left("port twice",
             "<Port Name=\"P\"/><Port Name=\"P\"/>"
                 + QByteArray(registerOf("N", "<Address>0</Address>")).replace("Device", "P"),
             "it needs P"));
    const QByteArray entries =
        "<Enumeration Name=\"N\"><EnumEntry Name=\"A\"><Value>1</Value></EnumEntry>%"
        "<Value>1</Value></Enumeration>";
    const auto entry = [&](const char *name, const char *text, const char *note) {
        rows.append(noted(name, QByteArray(entries).replace("%", text), note, 1));
    };
    entry("entry without a value", "<EnumEntry Name=\"B\"/>", "its entry B has no value");
    entry("entry value abc", "<EnumEntry Name=\"B\"><Value>abc</Value></EnumEntry>",
          "its entry B has no value");
    entry("entry name twice", "<EnumEntry Name=\"A\"><Value>2</Value></EnumEntry>",
          "its entry A is there twice");
    entry("entry value twice", "<EnumEntry Name=\"B\"><Value>1</Value></EnumEntry>",
          "its entry B has the value 1 of another one");
    rows.append(noted("no entries", "<Enumeration Name=\"N\"><Value>1</Value></Enumeration>",
                      "it has no entries", 1));
    rows.append(noted("node without a name", constantInteger("N", {}) + "<Integer/>", {}, 1));
    const QByteArray longName(1000000, 'x');
    rows.append(left("name of a million letters",
                     integer("N", element("pValue", longName)) + integer(longName, {}),
                     "it needs xxxxxxxx"));
}

void addDocuments(Rows &rows)
{
    rows.append(refused(
        "document type with entities",
        [] {
            const QByteArray good = withGood({});
            return "<!DOCTYPE RegisterDescription [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b "
                   "\"&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\">]>"
                + good.mid(good.indexOf("<Reg"));
        },
        "document type"));
    rows.append(refused(
        "document type from elsewhere",
        [] {
            const QByteArray good = withGood({});
            return "<!DOCTYPE RegisterDescription SYSTEM \"file:///etc/passwd\">"
                + good.mid(good.indexOf("<Reg"));
        },
        "document type"));
    rows.append(refused(
        "entity that nobody declared",
        [] { return withGood(integer("N", "<Value>&one;</Value>")); }, "line"));
    rows.append(refused(
        "5000 nested groups",
        [] {
            return withGood(QByteArray("<Group>").repeated(5000)
                            + QByteArray("</Group>").repeated(5000));
        },
        "nest deeper"));
    rows.append(refused(
        "5000 nested elements in an extension",
        [] {
            return withGood(integer("N",
                                    "<Extension>" + QByteArray("<x>").repeated(5000)
                                        + QByteArray("</x>").repeated(5000) + "</Extension>"));
        },
        "nest deeper"));
    rows.append(refused(
        "a million nodes",
        [] { return withGood(QByteArray("<Float Name=\"F\"/>").repeated(1000000)); }, "more than"));
    rows.last().isForCosts = true;
    rows.append(refused(
        "a million struct entries",
        [] {
            return withGood("<StructReg>" + QByteArray("<StructEntry/>").repeated(1000000)
                            + "</StructReg>");
        },
        "more than"));
    rows.last().isForCosts = true;
    rows.append(refused(
        "a struct that passes on a thousand references to each of ten thousand entries",
        [] {
            return withGood("<StructReg>" + QByteArray("<pIsLocked>One</pIsLocked>").repeated(1000)
                            + QByteArray("<StructEntry Name=\"N\"/>").repeated(10000)
                            + "</StructReg>");
        },
        "more than"));
    rows.last().isForCosts = true;
    for (int eighth = 1; eighth < 8; ++eighth) {
        rows.append(refused(
            "cut off after " + number(eighth) + " eighths",
            [eighth] {
                const QByteArray whole = circle(REFERENCE_WAYS[0], 50);
                return whole.left(whole.size() * eighth / 8);
            },
            "line"));
    }
    for (int bytes = 1; bytes < 24; bytes += 4) {
        rows.append(refused(
            "without its last " + number(bytes) + " bytes",
            [bytes] { return withGood({}).chopped(bytes); }, "line"));
    }
}

} // namespace

const QVector<HostileDescription> &hostileDescriptions()
{
    static const Rows ROWS = [] {
        Rows rows;
        addReferences(rows);
        addDeep(rows);
        addRegisters(rows);
        addNumbers(rows);
        addFormulas(rows);
        addNames(rows);
        addDocuments(rows);
        return rows;
    }();
    return ROWS;
}
