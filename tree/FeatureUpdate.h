#pragma once

#include "model/VexaPropertyTreeItem.h"
#include "tree/FeatureReader.h"
#include "tree/QGetFeaturesThread.h"

#include <QString>
#include <QVector>

#include <atomic>
#include <memory>

class CTreeItemValue;

/// What an update of a node needs to know of its camera.
struct FeatureUpdateContext
{
    const std::atomic<long int> &cameraId;
    NodeFactsTable &facts;
    const QGetFeaturesThread::ItemMap &items;
};

/// One update of one node: it reads the device into values of its own, publishes them under the item's short lock and
/// tells the views after that. An object is used once. Any thread.
class FeatureUpdate
{
public:
    FeatureUpdate(const FeatureUpdateContext &context, VexaPropertyTreeItem *item,
                  QGetFeaturesThread::UpdateStatusFlags status);
    ~FeatureUpdate();

    void run();
    /// Whether somebody else published a reading of the item meanwhile. Nobody knows then which of the two asked the
    /// device last, and the item may hold the older answer.
    bool wasCrossed() const;
    const QString &nodeName() const { return m_strNodeName; }
    /// The integer that was read, invalid when none was.
    QVariant readInteger() const;

    /// Whether a feature of this GenICam Visibility is shown at a user level: 0 guru, 1 expert, 2 beginner.
    static bool IsVisibleAtLevel(const QString &visibility, int userLevel);

private:
    enum class Access { Goes, Hidden, Unknown };

    Access readAccess();
    void translateTexts();
    Access decideVisibility();
    bool GetFeatureValue();
    /// Fills an enumeration with the entries that the device offers now.
    void AddEnumEntry(const EnumEntryReading &entry);
    bool mayPublish(VexaPropertyTreeItem::ReadingPart part);
    void hide();
    void publish();
    void publishValue();
    void publishTexts();
    /// Under the update lock of the row.
    void keepTexts(VexaPropertyTreeItem *item) const;
    bool isAnyRowVisible() const;
    void publishToolTips();

    const FeatureUpdateContext m_context;
    const long int m_lCameraID; ///< as it was when the update began: a stop makes the context's -1
    VexaPropertyTreeItem *const m_pItem;
    const QGetFeaturesThread::UpdateStatusFlags m_status;
    FeatureReader m_reader;
    const NodeFacts *m_pFacts = nullptr;
    QString m_strNodeName;
    QString m_strTagName;
    quint64 m_nReading = 0;
    quint64 m_nPublications = 0; ///< of the item, without those of others since the beginning

    // What was read; texts are empty where the translator has none.
    QString m_strTranslateName;
    QString m_strDescriptionTrans;
    bool m_bReadOnlyByAccess = false;
    bool m_bWriteOnly = false;
    bool m_bReadOnly = false;
    bool m_bAvailable = true;
    bool m_bVisible = true;
    bool m_bAccessRead = false; ///< access mode and pointer nodes were read
    QVector<EnumEntryReading> m_entries;
    bool m_bEntriesRead = false;
    std::unique_ptr<CTreeItemValue> m_pValue;
};
