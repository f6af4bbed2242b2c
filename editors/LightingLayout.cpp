#include "editors/LightingLayout.h"

#include <limits>

namespace {

struct Segment
{
    LightingLayout::Type eType;
    const char *namePart; ///< of the entry of the selector, in any case
    quint32 nBit;
    int nLeft, nTop, nRight, nBottom; ///< both ends inside
    const char *picture;
};

// In the order in which names are tried.
const Segment SEGMENTS[] = {
    {LightingLayout::TYPE_FOUR, "up", 2, 36, 10, 83, 31, "hor"},
    {LightingLayout::TYPE_FOUR, "down", 8, 36, 81, 83, 102, "hor"},
    {LightingLayout::TYPE_FOUR, "left", 1, 12, 31, 33, 78, "ver"},
    {LightingLayout::TYPE_FOUR, "right", 4, 86, 31, 107, 78, "ver"},
    {LightingLayout::TYPE_SIX, "Up Left", 16, 0, 0, 36, 48, "zuoshang"},
    {LightingLayout::TYPE_SIX, "Up Mid", 32, 37, 0, 84, 48, "zhongshang"},
    {LightingLayout::TYPE_SIX, "Up Right", 64, 85, 0, 121, 48, "youshang"},
    {LightingLayout::TYPE_SIX, "Down Right", 128, 85, 67, 121, 115, "youxia"},
    {LightingLayout::TYPE_SIX, "Down Mid", 256, 37, 67, 84, 115, "zhongxia"},
    {LightingLayout::TYPE_SIX, "Down Left", 512, 0, 67, 36, 115, "zuoxia"},
    {LightingLayout::TYPE_THREE, "Up", 1024, 0, 26, 98, 48, "three_up"},
    {LightingLayout::TYPE_THREE, "Mid", 2048, 0, 69, 98, 91, "three_middle"},
    {LightingLayout::TYPE_THREE, "Down", 8192, 0, 93, 98, 133, "three_down"},
};

constexpr char ALL_NAME[] = "all";

QString resource(const QString &strName)
{
    return QStringLiteral(":/Vexa/LightingSelector/%1.png").arg(strName);
}

} // namespace

LightingLayout::LightingLayout(Type eType)
    : m_nType(eType)
{
    for (const Segment &segment : SEGMENTS) {
        if (segment.eType == eType) {
            m_rectangles.insert(segment.nBit,
                                QRect(QPoint(segment.nLeft, segment.nTop),
                                      QPoint(segment.nRight, segment.nBottom)));
            m_nAllBits |= segment.nBit;
        }
    }
}

const LightingLayout &LightingLayout::of(int nType)
{
    static const LightingLayout layouts[] = {LightingLayout(TYPE_FOUR), LightingLayout(TYPE_SIX),
                                             LightingLayout(TYPE_THREE)};
    return layouts[nType == TYPE_SIX || nType == TYPE_THREE ? nType : TYPE_FOUR];
}

QSize LightingLayout::size() const
{
    return m_nType == TYPE_THREE ? QSize(120, 164) : QSize(122, 116);
}

QString LightingLayout::background() const
{
    switch (m_nType) {
    case TYPE_SIX:
        return resource(QStringLiteral("background_six"));
    case TYPE_THREE:
        return resource(QStringLiteral("background_three"));
    default:
        return resource(QStringLiteral("background"));
    }
}

quint32 LightingLayout::bitAt(const QPoint &point) const
{
    for (auto it = m_rectangles.cbegin(); it != m_rectangles.cend(); ++it) {
        if (it->contains(point)) {
            return it.key();
        }
    }
    return 0;
}

quint32 LightingLayout::bitOfName(const QString &strName) const
{
    for (const Segment &segment : SEGMENTS) {
        if (segment.eType == m_nType
            && strName.contains(QLatin1String(segment.namePart), Qt::CaseInsensitive)) {
            return segment.nBit;
        }
    }
    return strName.contains(QLatin1String(ALL_NAME), Qt::CaseInsensitive) ? LIGHT_ALL : 0;
}

QString LightingLayout::picture(quint32 nBit, State eState) const
{
    const bool bOn = eState == STATE_ON;
    for (const Segment &segment : SEGMENTS) {
        if (segment.nBit != nBit) {
            continue;
        }
        const char *const pSuffix = m_nType != TYPE_FOUR ? (bOn ? "click" : "normal")
            : bOn                                        ? "sel"
            : eState == STATE_HOVER                      ? "hov"
                                                         : "no";
        return resource(QLatin1String(segment.picture) + QLatin1Char('_') + QLatin1String(pSuffix));
    }
    return QString();
}

quint32 LightingLayout::neighbour(quint32 nBit, const QPoint &direction) const
{
    const QPoint from = m_rectangles.value(nBit).center();
    quint32 nNearest = nBit;
    int nLeast = std::numeric_limits<int>::max();
    for (auto it = m_rectangles.cbegin(); it != m_rectangles.cend(); ++it) {
        const QPoint way = it->center() - from;
        const int nAhead = QPoint::dotProduct(way, direction);
        if (it.key() != nBit && nAhead > 0) {
            // What lies straight ahead comes before what is merely near.
            const int nAside = way.manhattanLength() - nAhead;
            const int nDistance = nAhead + 2 * nAside;
            if (nDistance < nLeast) {
                nLeast = nDistance;
                nNearest = it.key();
            }
        }
    }
    return nNearest;
}
