#pragma once

#include <QList>
#include <QString>

class IVexaFeatureWidget;
class VexaPropertyTreeItem;

/// What decides whether a row is shown, in one place: for single notifications, for passes over all rows and for the
/// search. A branch is shown exactly when one of its rows is, so only rows without children are asked. GUI thread.
class RowVisibility
{
public:
    long lCameraID = -1;
    int nParentType = 0;
    QString strSearchText;
    QList<VexaPropertyTreeItem *>
        forceShow; ///< rows, with what is below them, shown whatever the item says
    QList<VexaPropertyTreeItem *> forceHide;
    const IVexaFeatureWidget *pOwner = nullptr;

    bool isLeafShown(VexaPropertyTreeItem *pItem) const;

private:
    bool isWanted(VexaPropertyTreeItem *pItem) const;
};
