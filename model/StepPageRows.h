#pragma once

#include <QHash>
#include <QSet>
#include <QVector>

class IVexaFeatureNotify;
class VexaPropertyTreeItem;

/// What the pages of one widget have to do with items: where their view was registered, and which rows of their own
/// follow which feature. Registrations are taken back camera by camera, also of items that have gone. GUI thread.
class StepPageRows
{
public:
    /// What a row takes over from its feature; flags.
    enum Follow { FOLLOW_VALUE = 1, FOLLOW_VISIBLE = 2, FOLLOW_READ_ONLY = 4, FOLLOW_ALL = 7 };

    /// Registers the view on the item.
    void watch(long lCameraID, VexaPropertyTreeItem *pItem, IVexaFeatureNotify *pView);
    /// The row follows the feature from now on, and is brought in line at once. The view hears of the feature.
    void follow(long lCameraID, VexaPropertyTreeItem *pFeature, VexaPropertyTreeItem *pRow,
                int nWhat, IVexaFeatureNotify *pView);
    bool isFollowed(const VexaPropertyTreeItem *pItem) const { return m_followers.contains(pItem); }

    /// The feature has changed in this: its rows take it over.
    void bringUp(VexaPropertyTreeItem *pFeature, Follow eChange);
    /// The pages of this camera were out of sight, or are new: all their rows take everything over.
    void bringAllUp(long lCameraID);
    /// Whether the rows of this camera may be edited; true until told otherwise.
    bool isEditable(long lCameraID) const { return !m_readOnly.contains(lCameraID); }
    void setEditable(long lCameraID, bool bEditable);
    /// Takes every registration of this camera back.
    void forget(long lCameraID, IVexaFeatureNotify *pView);

private:
    struct Follower
    {
        long lCameraID;
        VexaPropertyTreeItem *pFeature;
        VexaPropertyTreeItem *pRow;
        int nWhat;
    };
    static void takeOver(const Follower &follower, int nChanges);

    QHash<long, QSet<VexaPropertyTreeItem *>> m_watched; ///< by camera
    QSet<long> m_readOnly; ///< cameras whose tree was opened read only
    QHash<const VexaPropertyTreeItem *, QVector<Follower>> m_followers; ///< by feature
};
