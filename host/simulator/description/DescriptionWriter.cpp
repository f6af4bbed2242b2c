#include "host/simulator/description/DescriptionWriter.h"

#include "host/simulator/description/FeatureTable.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace {

/// The order that the schema asks for. Entries of enumerations and structures come ahead of "Value".
const QVector<QByteArray> &schemaOrder()
{
    static const QVector<QByteArray> kOrder = {
        "ToolTip",
        "Description",
        "DisplayName",
        "Visibility",
        "pIsImplemented",
        "pIsAvailable",
        "pIsLocked",
        "ImposedAccessMode",
        "Streamable",
        "Address",
        "pAddress",
        "pIndex",
        "Length",
        "AccessMode",
        "pPort",
        "Cachable",
        "PollingTime",
        "pInvalidator",
        "Bit",
        "LSB",
        "MSB",
        "Sign",
        "Endianess",
        "pVariable",
        "Formula",
        "FormulaTo",
        "FormulaFrom",
        "Value",
        "pValue",
        "OnValue",
        "OffValue",
        "CommandValue",
        "Min",
        "pMin",
        "Max",
        "pMax",
        "Inc",
        "pInc",
        "Unit",
        "Representation",
        "Slope",
        "pSelected",
        "pFeature",
    };
    return kOrder;
}

int rank(const QByteArray &tag)
{
    const int found = schemaOrder().indexOf(tag);
    Q_ASSERT_X(found >= 0, "DescriptionWriter", tag.constData());
    return found;
}

void writeProperty(QXmlStreamWriter &xml, const PropertyRow &property)
{
    xml.writeStartElement(QString::fromUtf8(property.m_strTag));
    if (!property.m_strAttribute.isEmpty()) {
        xml.writeAttribute(QString::fromUtf8(property.m_strAttribute),
                           QString::fromUtf8(property.m_strAttributeValue));
    }
    xml.writeCharacters(QString::fromUtf8(property.m_strText));
    xml.writeEndElement();
}

void writeNode(QXmlStreamWriter &xml, const NodeRow &node)
{
    xml.writeStartElement(QString::fromUtf8(node.m_strTag));
    // A StructReg has no name of its own in the schema, only its entries do.
    xml.writeAttribute(node.m_strTag == "StructReg" ? "Comment" : "Name",
                       QString::fromUtf8(node.m_strName));
    if (!node.m_strNameSpace.isEmpty()) {
        xml.writeAttribute("NameSpace", QString::fromUtf8(node.m_strNameSpace));
    }
    QVector<PropertyRow> properties = node.m_properties;
    const bool isShown =
        std::any_of(properties.cbegin(), properties.cend(),
                    [](const PropertyRow &property) { return property.m_strTag == "Visibility"; });
    if (!isShown && !node.m_strNameSpace.isEmpty() && node.m_strTag != "EnumEntry") {
        properties.append({"Visibility", "Beginner", {}, {}});
    }
    std::stable_sort(properties.begin(), properties.end(),
                     [](const PropertyRow &a, const PropertyRow &b) {
                         return rank(a.m_strTag) < rank(b.m_strTag);
                     });
    const auto firstBehind =
        std::find_if(properties.cbegin(), properties.cend(), [](const PropertyRow &property) {
            return rank(property.m_strTag) >= rank("Value");
        });
    std::for_each(properties.cbegin(), firstBehind,
                  [&xml](const PropertyRow &p) { writeProperty(xml, p); });
    for (const NodeRow &child : node.m_children) {
        writeNode(xml, child);
    }
    std::for_each(firstBehind, properties.cend(),
                  [&xml](const PropertyRow &p) { writeProperty(xml, p); });
    xml.writeEndElement();
}

void writeHeader(QXmlStreamWriter &xml, const DescriptionHeader &header)
{
    const QPair<const char *, QByteArray> attributes[] = {
        {"ModelName", header.m_strModelName},
        {"VendorName", header.m_strVendorName},
        {"ToolTip", header.m_strToolTip},
        {"StandardNameSpace", "GEV"},
        {"SchemaMajorVersion", "1"},
        {"SchemaMinorVersion", "1"},
        {"SchemaSubMinorVersion", "0"},
        {"MajorVersion", "1"},
        {"MinorVersion", "0"},
        {"SubMinorVersion", "0"},
        {"ProductGuid", header.m_strProductGuid},
        {"VersionGuid", header.m_strVersionGuid},
        {"xmlns", "http://www.genicam.org/GenApi/Version_1_1"},
        {"xmlns:xsi", "http://www.w3.org/2001/XMLSchema-instance"},
        {"xsi:schemaLocation",
         "http://www.genicam.org/GenApi/Version_1_1 "
         "http://www.genicam.org/GenApi/GenApiSchema_Version_1_1.xsd"},
    };
    for (const auto &attribute : attributes) {
        xml.writeAttribute(attribute.first, QString::fromUtf8(attribute.second));
    }
}

} // namespace

QByteArray writtenDescription(const FeatureTable &table, const DescriptionHeader &header)
{
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(2);
    xml.writeStartDocument();
    xml.writeStartElement("RegisterDescription");
    writeHeader(xml, header);
    QByteArray group;
    for (const NodeRow &node : table.nodes()) {
        if (node.m_strGroup != group) {
            if (!group.isEmpty()) {
                xml.writeEndElement();
            }
            group = node.m_strGroup;
            if (!group.isEmpty()) {
                xml.writeStartElement("Group");
                xml.writeAttribute("Comment", QString::fromUtf8(group));
            }
        }
        writeNode(xml, node);
    }
    if (!group.isEmpty()) {
        xml.writeEndElement();
    }
    xml.writeStartElement("Port");
    xml.writeAttribute("Name", "Device");
    xml.writeAttribute("NameSpace", "Standard");
    xml.writeTextElement("ToolTip", "Port that gives access to the registers of the device.");
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndDocument();
    return bytes;
}
