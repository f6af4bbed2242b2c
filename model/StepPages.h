#pragma once

#include <QPointer>
#include <QVector>

class IVexaFeatureWidget;

/// The widgets that lay pages over feature trees. They show items that belong to a tree, so the tree takes their pages
/// down before its items go. GUI thread.
namespace StepPages {

using Widgets = QVector<QPointer<IVexaFeatureWidget>>;

void enter(IVexaFeatureWidget *pWidget);
void leave(IVexaFeatureWidget *pWidget);
/// Takes every page of this camera down; returns the widgets that showed one.
Widgets takeDown(long lCameraID);
/// Those of the widgets that show no camera since lay the pages of this one anew.
void layAnew(const Widgets &widgets, long lCameraID);

} // namespace StepPages
