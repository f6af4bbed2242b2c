#include "model/StepPages.h"

#include "model/IVexaFeatureWidget.h"

#include <algorithm>

namespace {

StepPages::Widgets &pageWidgets()
{
    static StepPages::Widgets widgets;
    return widgets;
}

} // namespace

void StepPages::enter(IVexaFeatureWidget *pWidget)
{
    pageWidgets().append(pWidget);
}

void StepPages::leave(IVexaFeatureWidget *pWidget)
{
    pageWidgets().removeAll(pWidget);
}

StepPages::Widgets StepPages::takeDown(long lCameraID)
{
    Widgets shown;
    const Widgets widgets = pageWidgets();
    for (const QPointer<IVexaFeatureWidget> &pWidget : widgets) {
        if (!pWidget || !pWidget->isInitialized(lCameraID)) {
            continue;
        }
        if (pWidget->shownCameraID() == lCameraID) {
            shown.append(pWidget);
        }
        pWidget->removeCameraID(lCameraID);
    }
    return shown;
}

void StepPages::layAnew(const Widgets &widgets, long lCameraID)
{
    for (const QPointer<IVexaFeatureWidget> &pWidget : widgets) {
        if (pWidget && pWidget->shownCameraID() == -1) {
            pWidget->setCameraID(lCameraID);
        }
    }
}
