#pragma once

#include <QMap>
#include <QString>

#include <array>

class QCameraTask;
class VexaFeatureTree;
class VexaPropertyTreeItem;

/// A light by its nodes: which entry of the selector is which segment, and the accesses that read and switch them. A
/// value: whoever runs a sequence of accesses holds a copy, as boxes may take the editor away meanwhile. The items
/// belong to the tree and are not touched unless isLive(). GUI thread, which waits for the device.
class LightingAccess
{
public:
    static constexpr int SETTING_COUNT = 4;

    LightingAccess() = default;
    /// Of a row with the value of a lighting selector; a row without it gives a light without items.
    explicit LightingAccess(VexaPropertyTreeItem *pRow);

    bool operator==(const LightingAccess &other) const;

    int type() const { return m_nType; }
    /// Numbers of the entries by bit, LIGHT_ALL included.
    const QMap<quint32, qint64> &entries() const { return m_entries; }
    QString selectorName() const { return m_strSelector; }
    /// Name of the entry of a bit, for people.
    QString entryName(quint32 nBit) const { return m_names.value(nBit); }
    /// Bit of an entry, 0 for one that names no segment.
    quint32 bitOf(qint64 nEntry) const { return m_entries.key(nEntry, 0); }

    VexaPropertyTreeItem *selectorItem() const { return m_pSelector; }
    VexaPropertyTreeItem *enableItem() const { return m_pEnable; }
    /// "LightingBitmap"; null when the device has none.
    VexaPropertyTreeItem *bitmapItem() const { return m_pBitmap; }
    VexaPropertyTreeItem *settingItem(int nIndex) const { return m_settings[size_t(nIndex)]; }
    /// Commands; null when there are none.
    VexaPropertyTreeItem *allOffItem() const { return m_pAllOff; }
    VexaPropertyTreeItem *allOnItem() const { return m_pAllOn; }
    /// Null when the camera has gone.
    VexaFeatureTree *tree() const;
    /// Whether selector and switch are still those of the tree.
    bool isLive() const;

    /// What the tree knows of the two nodes.
    qint64 knownEntry() const;
    bool knownEnable() const;
    /// The tree takes this entry for the present one, without telling anybody.
    void setKnownEntry(qint64 nEntry) const;

    /// From the device. False leaves the argument alone.
    bool readEntry(qint64 &nEntry) const;
    bool readEnable(bool &bOn) const;
    /// All segments from "LightingBitmap", in which each has the bit of its entry's number.
    bool readBitmap(quint32 &nMask) const;
    /// All segments by selecting one after the other; the selector goes back to where it stood.
    bool walkSegments(quint32 &nMask, bool bWithAll) const;
    /// Selects an entry and reads the selector back, since a device may keep another one. No message.
    bool select(qint64 nEntry) const;
    /// Switches the selected segment. No message.
    bool switchSelected(bool bOn) const;
    /// Selects and switches on the tree's own road, which tells the user of a failure.
    bool writeSegment(quint32 nBit, bool bOn) const;
    /// Gives a shared setting of all segments this value, but for that of `nSkippedEntry`; -1 skips none.
    bool spreadSetting(int nSetting, qint64 nValue, qint64 nSkippedEntry) const;
    /// Reads what the tree knows of selector, switch and bitmap anew.
    void refreshItems() const;
    /// Has the workers read the nodes again that direct writes and walks have touched.
    void announce(const QStringList &further = {}) const;

private:
    QCameraTask *task() const;
    void restore(qint64 nEntry) const;

    int m_nType = 0;
    long int m_lCameraID = -1;
    VexaPropertyTreeItem *m_pSelector = nullptr;
    VexaPropertyTreeItem *m_pEnable = nullptr;
    VexaPropertyTreeItem *m_pBitmap = nullptr;
    std::array<VexaPropertyTreeItem *, SETTING_COUNT> m_settings{};
    VexaPropertyTreeItem *m_pAllOff = nullptr;
    VexaPropertyTreeItem *m_pAllOn = nullptr;
    QString m_strSelector;
    QString m_strEnable;
    QMap<quint32, qint64> m_entries;
    QMap<quint32, QString> m_names;
};
