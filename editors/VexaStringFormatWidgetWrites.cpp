// The end of an edit: the checks, the write and the read-back.

#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/CameraInterface.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "ShellServicesModule/COMMONINTERFACE.h"
#include "ShellServicesModule/QFunction.h"
#include "editors/EditorHost.h"
#include "editors/VexaStringFormatRules.h"
#include "editors/VexaStringFormatWidget.h"
#include "model/CustomItemValues.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/VexaFeatureTree.h"

#include <QPointer>
#include <QTextEdit>

namespace {

using namespace VexaStringFormatRules;

constexpr int HINT_FAILURE = 3;

} // namespace

void VexaStringFormatWidget::OnTextEditingFinished()
{
    const QString strText = m_pTextEdit->toPlainText();
    const bool bFailedBefore = !m_strFailedText.isEmpty() && strText == m_strFailedText;
    if (m_bWriting || bFailedBefore || strText == boxForm(m_strText)) {
        return;
    }
    QCameraTask *const pTask = task();
    const QString strNode = formatNode();
    if (!pTask || strNode.isEmpty()) {
        return;
    }
    if (pTask->GetAccessMode(strNode, nullptr) == NODE_RO) {
        showStoredText();
        return;
    }
    if (acceptText(strNode, strText)) {
        const QPointer<VexaStringFormatWidget> guard(this);
        m_bWriting = true;
        writeText(strNode, strText);
        if (guard) {
            m_bWriting = false;
        }
    }
}

bool VexaStringFormatWidget::acceptText(const QString &strFormatNode, const QString &strText)
{
    const Refusal eRefusal = refusal(strFormatNode, strText);
    if (eRefusal == REFUSED_NOT) {
        return true;
    }
    const QString strWarning = warning(eRefusal);
    showStoredText();
    // Not on the stack of a focus change: while the box is open the row may go, and Qt would go on with it.
    QMetaObject::invokeMethod(
        this,
        [this, strWarning] {
            CustomMessageBox::warning(this, strWarning, QString(), 1, QString());
        },
        Qt::QueuedConnection);
    return false;
}

void VexaStringFormatWidget::writeText(const QString &strFormatNode, const QString &strText)
{
    const QPointer<VexaStringFormatWidget> guard(this);
    QCameraTask *pTask = task();
    int nError = 0;
    const bool bWritten = pTask && pTask->SetStringValue(strFormatNode, strText, &nError);
    if (bWritten) {
        m_strFailedText.clear();
        m_strWorkingText = strText;
        VexaFeatureTree *const pTree = EditorHost::featureTree(m_lCameraID);
        if (!pTree) {
            return;
        }
        pTree->updateFeature(m_pValue->m_pFormatItem, QGetFeaturesThread::UPDATE_REFRESH);
    } else {
        m_strFailedText = strText;
        showFailure(strFormatNode, strText, nError);
    }
    pTask = guard ? task() : nullptr;
    if (!pTask) {
        return;
    }
    QString strRead;
    const bool bRead =
        pTask->GetStringValue(strFormatNode, &strRead, nullptr, nullptr, true, false);
    if (bRead) {
        m_strText = strRead;
    }
    if (m_pTextEdit->toPlainText().isEmpty()) {
        applyLook(false);
        showStoredText();
    } else if (bWritten && bRead && m_pTextEdit->toPlainText() != boxForm(m_strText)) {
        showStoredText(); // the device made something else of it
    }
    m_strWorkingText = m_strText;
    m_pValue->m_strValue = m_strText;
    COMMONINTERFACE::AddCurrentCamModified(pTask->GetCameraName());
}

void VexaStringFormatWidget::showFailure(const QString &strFormatNode, const QString &strText,
                                         int nError)
{
    QString strShown = strText;
    strShown.replace(QLatin1Char('>'), QLatin1String("&gt;"));
    strShown.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    // All at once: a value may hold a "%1" itself.
    const QString strMessage = VexaStringFormatWidget::tr("Node '%1':failed to save value '%2'. %3")
                                   .arg(strFormatNode, strShown, QString())
        + QStringLiteral("\r\n") + CameraInterface::GenerateSDKCode(nError, true);
    QFunction::ShowMessage(parentWidget(),
                           VexaStringFormatWidget::tr("Failed to set the feature value."),
                           strMessage, QString(), HINT_FAILURE, true);
}
