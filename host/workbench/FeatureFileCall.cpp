#include "host/workbench/FeatureFileCall.h"

#include "tree/VexaFeatureTree.h"

namespace {

constexpr std::chrono::milliseconds LOOK_INTERVAL{50};
/// The end of a job is on its way for a moment when the job itself runs no more.
constexpr int IDLE_LOOKS = 4;

} // namespace

FeatureFileCall::FeatureFileCall(VexaFeatureTree &tree, std::chrono::milliseconds limit,
                                 QObject *parent)
    : QObject(parent)
    , m_pTree(&tree)
    , m_limit(limit)
{
    connect(&m_timer, &QTimer::timeout, this, &FeatureFileCall::look);
}

void FeatureFileCall::begin(EndSignal endSignal)
{
    connect(m_pTree, endSignal, this,
            [this](bool success) { end(success ? End::Done : End::Failed); });
    m_deadline.setRemainingTime(m_limit);
    m_timer.start(LOOK_INTERVAL);
}

void FeatureFileCall::exportTo(const QString &bag)
{
    begin(&VexaFeatureTree::SigEndExportFeature);
    m_pTree->SaveCamFeatures(true, bag);
}

void FeatureFileCall::check(const QString &text)
{
    begin(&VexaFeatureTree::SigEndCheckFeature);
    if (!m_pTree->CheckCamFeatures(text)) {
        end(End::Unsaid);
    }
}

void FeatureFileCall::import(const QString &text)
{
    begin(&VexaFeatureTree::SigEndImportFeature);
    m_pTree->LoadCamFeatures(true, text);
}

void FeatureFileCall::look()
{
    if (!m_pTree) {
        end(End::TreeGone);
        return;
    }
    if (!m_pTree->isFeatureFileBusy()) {
        if (++m_nIdleLooks >= IDLE_LOOKS) {
            end(End::Unsaid);
        }
        return;
    }
    m_nIdleLooks = 0;
    const int done = m_pTree->featureFileProgress().done;
    if (done != m_nDone) {
        m_nDone = done;
        m_deadline.setRemainingTime(m_limit);
    } else if (m_deadline.hasExpired()) {
        end(End::Stuck);
    }
}

void FeatureFileCall::end(End end)
{
    if (m_bEnded) {
        return;
    }
    m_bEnded = true;
    m_timer.stop();
    // The tree is in the middle of its own end.
    QMetaObject::invokeMethod(
        this, [this, end] { emit ended(end); }, Qt::QueuedConnection);
}
