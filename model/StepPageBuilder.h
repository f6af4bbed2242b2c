#pragma once

#include "model/VexaPropertyTreeItem.h"

#include <QList>
#include <QMap>
#include <QString>

class IVexaFeatureNotify;
class QCameraTask;
class QDomElement;
class StepPageRows;
class VexaFeatureTree;

/// Lays pages over a feature tree from a description: Category and Feature elements with the attributes "Name",
/// "ShowInAll", "DisplayName_En" and "DisplayName_Cn". A Feature shows the item of the tree itself or a row of the
/// page's own. Whatever the tree lacks is left out without a word. GUI thread; a few rules ask the device.
class StepPageBuilder
{
public:
    /// Whose pages are laid.
    struct Site
    {
        VexaFeatureTree &tree;
        long lCameraID;
        int nPageIndex;
        IVexaFeatureNotify *pView;
        StepPageRows &rows;
        QList<VexaPropertyTreeItem *> &showInAll; ///< takes the pages that the basic view hides
        QMap<int, QString> &platformKeys; ///< by camera, once settled
        const QMap<int, QString>
            &platformHints; ///< by camera: the portable name that tells the platform
    };
    explicit StepPageBuilder(const Site &site);

    /// Lays what stands below `pageElement`, whatever its own tag is, below the item.
    void lay(VexaPropertyTreeItem *pParent, const QDomElement &pageElement);

private:
    struct Entry
    {
        QString strName;
        bool bShowInAll;
        QString strDisplayNameEn;
        QString strDisplayNameCn;
    };
    struct FeatureRule;
    struct CategoryRule;
    using Item = VexaPropertyTreeItem;

    void layBelow(Item *pParent, const QDomElement &pageElement, int nDepth);
    void layCategory(Item *pParent, const QDomElement &element, const Entry &entry, int nDepth);
    void layFeature(Item *pParent, const Entry &entry);

    void layLightEnable(Item *pParent, const Entry &entry);
    void layLightingSelector(Item *pParent, const Entry &entry);
    void layFocusStep(Item *pParent, const Entry &entry);
    void laySelfTrigger(Item *pParent, const Entry &entry);
    void layRegularExpression(Item *pParent, const Entry &entry);
    void layScreenHomepage(Item *pParent, const Entry &entry);
    void layFormat(Item *pParent, const Entry &entry);

    /// The tree's item of this node name; null when the device lacks it.
    Item *item(const QString &strName) const;
    /// Newer devices tune themselves by the command "SmartTune"; the older ones have pages for it.
    bool hasTuningCommand() const;
    void attach(Item *pFeature, Item *pParent, const Entry &entry);
    Item *newRow(Item *pParent, const QString &strName, const QString &strTag = QString());
    /// A row that stands for a feature that it follows.
    Item *newRowFor(Item *pFeature, Item *pParent, const QString &strName, const QString &strTag);
    static void setStepNames(Item *pItem, const Entry &entry);
    Item *pageRootOf(Item *pItem) const;

    QString resolved(const QString &strPortableName);
    QString settledPlatform(const QString &strPortableName) const;

    QCameraTask *task() const;
    bool isImplemented(const QString &strNode) const;
    /// "ProductType" of the device; false when it cannot be read.
    bool readProductType(qint64 &nType) const;

    Site m_site;
};
