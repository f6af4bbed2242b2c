#pragma once

#include <QMap>
#include <QRect>
#include <QSize>
#include <QString>

/// Bit of the entry that stands for all segments of a light, in every layout.
constexpr quint32 LIGHT_ALL = 16384;

/// How the segments of a light lie in its picture. One for each `m_nLightingType`; process-wide, GUI thread.
class LightingLayout
{
public:
    enum Type { TYPE_FOUR = 0, TYPE_SIX = 1, TYPE_THREE = 2 };
    enum State { STATE_OFF, STATE_HOVER, STATE_ON };

    /// An unknown type has the layout of four segments.
    static const LightingLayout &of(int nType);

    int type() const { return m_nType; }
    /// Of the picture, in logical pixels.
    QSize size() const;
    QString background() const;
    /// Rectangles by bit of the segment, 1 to 8192.
    const QMap<quint32, QRect> &rectangles() const { return m_rectangles; }
    /// All segments of the layout.
    quint32 allBits() const { return m_nAllBits; }
    quint32 firstBit() const { return m_rectangles.firstKey(); }
    /// The segment at this point of the picture, 0 for none.
    quint32 bitAt(const QPoint &point) const;
    /// The segment, or LIGHT_ALL, that an entry of the selector names; 0 for none.
    quint32 bitOfName(const QString &strName) const;
    /// The picture of a segment; one without a picture for the mouse over it looks as when it is off.
    QString picture(quint32 nBit, State eState) const;
    /// The segment that lies next in that direction (a unit vector), `nBit` itself when there is none.
    quint32 neighbour(quint32 nBit, const QPoint &direction) const;

private:
    explicit LightingLayout(Type eType);

    Type m_nType;
    QMap<quint32, QRect> m_rectangles;
    quint32 m_nAllBits = 0;
};
