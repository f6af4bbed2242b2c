#pragma once

#include <QPointer>
#include <QVector>

class IVexaFeatureWidget;
class QString;
class VexaPropertyTreeItem;

/// The widgets that lay pages over feature trees, and the rows of their pages. They show items that belong to a tree, so
/// the tree takes their pages down before its items go. GUI thread.
namespace StepPages {

using Widgets = QVector<QPointer<IVexaFeatureWidget>>;

/// The widget's pages are taken down with their trees, until it leaves.
void enter(IVexaFeatureWidget *pWidget);
void leave(IVexaFeatureWidget *pWidget);
/// Takes every page of this camera down; returns the widgets that showed one.
Widgets takeDown(long lCameraID);
/// Those of the widgets that show no camera since lay the pages of this one anew.
void layAnew(const Widgets &widgets, long lCameraID);
/// The first item of this node name below the branch, depth first; null when there is none, and for a null branch.
VexaPropertyTreeItem *findRow(const VexaPropertyTreeItem *pBranch, const QString &strName);

} // namespace StepPages
