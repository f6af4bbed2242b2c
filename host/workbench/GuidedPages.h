#pragma once

#include "model/IVexaFeatureWidget.h"

#include <QDomDocument>

class CustomCheckBox;
class CustomLabel;
class VexaFeatureTree;

/// Pages for devices that a description names, such as code readers: the features that a task needs, in its order,
/// with rows of their own for lights, focus, screen, formats and the host's own trigger. They lie over the camera's
/// feature tree and show the same items. GUI thread.
class GuidedPages : public IVexaFeatureWidget
{
    Q_OBJECT
public:
    explicit GuidedPages(QWidget *parent = nullptr);

    /// Shows the pages of this camera, or a line of text that there are none; -1 shows nothing.
    void showCamera(long lCameraID);

    bool setFeatureValue(const QString &strNodeType, const QString &strNodeName,
                         const QVariant &oNodeValue) override;
    bool afterSetFeatureValue(const QString &strNodeName) override;
    void itemValueChanged(VexaPropertyTreeItem *pItem, bool bFromUiJson) override;
    void removeCameraID(long lCameraID) override;
    void preparePage(int nPageIndex) override;
    VexaPropertyTreeItem *createPageRoot() override;

protected:
    void changeEvent(QEvent *event) override;

private:
    VexaFeatureTree *tree() const;
    VexaPropertyTreeItem *row(const char *pName) const;
    void prepareLights(VexaPropertyTreeItem *pRoot);
    void prepareFocus(VexaPropertyTreeItem *pRoot);
    void prepareTrigger(VexaPropertyTreeItem *pRoot);
    void followFocusStep(VexaPropertyTreeItem *pFocusRow);
    /// Features have the titles that the device's texts give them, where the description gives none.
    void takeFeatureTitles(VexaPropertyTreeItem *pBranch);
    bool setTriggerRow(const QString &strName, const QVariant &value);
    void editRules();
    void retranslate();
    void showState();

    CustomCheckBox *m_pBasicOnly;
    CustomLabel *m_pNoPages;
    QWidget *m_pView;
};
