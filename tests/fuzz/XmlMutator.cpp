#include "FuzzTarget.h"

#include <QByteArray>
#include <QList>
#include <QVector>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <random>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t *data, std::size_t size, std::size_t maxSize);

const bool CHECK_EVERYTHING = false;

namespace {

/// An element that holds nothing but text: "<Tag ...>text</Tag>".
struct Leaf
{
    int start;
    int text;
    int textEnd;
    int end;
};

QVector<Leaf> leavesOf(const QByteArray &xml)
{
    QVector<Leaf> leaves;
    int end = 0;
    while ((end = xml.indexOf("</", end)) >= 0) {
        const int start = end > 0 ? xml.lastIndexOf('<', end - 1) : -1;
        const int text = start >= 0 ? xml.indexOf('>', start) + 1 : 0;
        const int close = xml.indexOf('>', end);
        if (start >= 0 && text > 0 && text <= end && close > 0 && xml[start + 1] != '/'
            && xml[text - 2] != '/') {
            leaves.append({start, text, end, close + 1});
        }
        ++end;
    }
    return leaves;
}

/// The values of all attributes.
QVector<Leaf> attributesOf(const QByteArray &xml)
{
    QVector<Leaf> attributes;
    int begin = 0;
    while ((begin = xml.indexOf("=\"", begin)) >= 0) {
        const int text = begin + 2;
        const int end = xml.indexOf('"', text);
        if (end < 0) {
            break;
        }
        attributes.append({text, text, end, end});
        begin = end + 1;
    }
    return attributes;
}

QByteArray escaped(QByteArray text)
{
    return text.replace('&', "&amp;").replace('<', "&lt;").replace('"', "&quot;");
}

class Mutation
{
public:
    Mutation(const QByteArray &xml, unsigned int seed)
        : m_xml(xml)
        , m_random(seed)
        , m_leaves(leavesOf(xml))
        , m_attributes(attributesOf(xml))
    {
    }

    bool isPossible() const { return !m_leaves.isEmpty(); }

    QByteArray apply()
    {
        static const QList<QByteArray> TEXTS =
            QByteArray(
                "0|1|-1|2|4|8|63|64|200|0xFFFFFFFFFFFFFFFF|9223372036854775807|"
                "-9223372036854775808|18446744073709551616|4294967300|1e308|NaN|-INF|| |abc|"
                "N|One|Device|TO/0|A%B|A&lt;&lt;B|(A=0)?5:(1/A)|A**B|~A|ROUND(A,B)|BigEndian|"
                "Signed|RO|WO|RW")
                .split('|');
        constexpr unsigned int ATTRIBUTES_OF_ALL = 4;
        const bool isAttribute = !m_attributes.isEmpty() && m_random() % ATTRIBUTES_OF_ALL == 0;
        if (isAttribute) {
            const Leaf value = any(m_attributes);
            const Leaf source = any(m_attributes);
            switch (m_random() % 3) {
            case 0:
                return with(value.text, value.textEnd,
                            m_xml.mid(source.text, source.textEnd - source.text));
            case 1:
                return with(
                    value.text, value.textEnd,
                    TEXTS.at(static_cast<int>(m_random() % static_cast<unsigned>(TEXTS.size()))));
            default:
                return with(value.text, value.textEnd,
                            escaped(mutated(m_xml.mid(value.text, value.textEnd - value.text))));
            }
        }
        const Leaf leaf = any(m_leaves);
        const Leaf other = any(m_leaves);
        const QByteArray whole = m_xml.mid(leaf.start, leaf.end - leaf.start);
        switch (m_random() % 6) {
        case 0: // the text of another element: references that lead elsewhere, circles
            return with(leaf.text, leaf.textEnd, m_xml.mid(other.text, other.textEnd - other.text));
        case 1:
            return with(
                leaf.text, leaf.textEnd,
                TEXTS.at(static_cast<int>(m_random() % static_cast<unsigned>(TEXTS.size()))));
        case 2:
            return with(leaf.start, leaf.end, {});
        case 3:
            return with(other.start, other.start, whole);
        case 4: // the same contents under another name
            return with(leaf.start, leaf.end,
                        m_xml.mid(other.start, other.text - other.start)
                            + m_xml.mid(leaf.text, leaf.textEnd - leaf.text)
                            + m_xml.mid(other.textEnd, other.end - other.textEnd));
        default:
            return with(leaf.text, leaf.textEnd,
                        escaped(mutated(m_xml.mid(leaf.text, leaf.textEnd - leaf.text))));
        }
    }

private:
    Leaf any(const QVector<Leaf> &leaves)
    {
        return leaves.at(static_cast<int>(m_random() % static_cast<unsigned int>(leaves.size())));
    }

    QByteArray with(int from, int to, const QByteArray &text) const
    {
        return m_xml.left(from) + text + m_xml.mid(to);
    }

    static QByteArray mutated(QByteArray text)
    {
        const int size = text.size();
        text.resize(size + 32);
        const std::size_t length =
            LLVMFuzzerMutate(reinterpret_cast<std::uint8_t *>(text.data()),
                             static_cast<std::size_t>(size), static_cast<std::size_t>(text.size()));
        text.truncate(static_cast<int>(length));
        return text;
    }

    const QByteArray m_xml;
    std::minstd_rand m_random;
    const QVector<Leaf> m_leaves;
    const QVector<Leaf> m_attributes;
};

} // namespace

/// Most changes keep the elements whole, so that they get past the XML parser; every fourth may break anything.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t *data, std::size_t size,
                                               std::size_t maxSize, unsigned int seed)
{
    Mutation mutation(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)),
                      seed);
    if (seed % 4 == 0 || !mutation.isPossible()) {
        return LLVMFuzzerMutate(data, size, maxSize);
    }
    const QByteArray result = mutation.apply();
    const std::size_t length = std::min(static_cast<std::size_t>(result.size()), maxSize);
    std::memcpy(data, result.constData(), length);
    return length;
}
