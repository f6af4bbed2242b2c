// The tree's boxes, never two at once, and its loading dialogs.

#include "ControlKit/CustomLoadingDialog.h"
#include "ControlKit/CustomMessageBox.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "tree/QGetFeaturesThread.h"
#include "tree/TreeCallScope.h"
#include "tree/VexaFeatureTree.h"
#include "tree/WriteMessages.h"

#include <QCoreApplication>
#include <QDebug>

#include <utility>

namespace {

constexpr int LOADING_KEY = 1;
constexpr int LOADING_KEY_CL_OFFSET = 3;
constexpr int BUTTONS_OK = 1;
constexpr int BUTTONS_YES_NO = 3;
constexpr int ANSWER_YES = 1;

} // namespace

bool VexaFeatureTree::confirmed(Box box, const QString &text, const QString &title)
{
    if (m_bReadyForDelete) {
        return false;
    }
    if (m_bBoxBlocks) {
        qInfo().noquote() << QStringLiteral("not asked, another box is open: ") + text;
        return false;
    }
    const TreeCallScope scope(this);
    delete m_pMessageBox;
    m_bBoxBlocks = true;
    const int answer = box == BOX_QUESTION
        ? CustomMessageBox::ask(this, text, title, BUTTONS_YES_NO, QString(), nullptr)
        : CustomMessageBox::warning(this, text, title,
                                    box == BOX_CAUTION ? BUTTONS_YES_NO : BUTTONS_OK, QString());
    if (scope.treeIsGoing()) {
        return false;
    }
    m_bBoxBlocks = false;
    if (m_heldMessage) {
        std::exchange(m_heldMessage, nullptr)();
    }
    return answer == ANSWER_YES;
}

void VexaFeatureTree::ShowMessage(QWidget *parent, const QString &first, const QString &second,
                                  const QString &third, int hintStyle, bool openExternalLinks)
{
    if (m_bBoxBlocks) {
        m_heldMessage = [=] {
            ShowMessage(parent, first, second, third, hintStyle, openExternalLinks);
        };
        return;
    }
    if (m_bReadyForDelete) {
        qInfo("ready for delete");
        return;
    }
    if (!m_bMessageEnable) {
        return;
    }
    QTaskManager *manager = QTaskManager::Instance();
    if (manager && manager->IsCameraTaskReleased(m_lCameraID)) {
        qInfo().noquote() << QStringLiteral("VexaFeatureTree::ShowMessage failed:cameraID:")
                + QString::number(m_lCameraID);
        return;
    }
    delete m_pMessageBox;

    const bool hasTitle = !second.isEmpty();
    auto *box = new CustomMessageBox(this);
    m_pMessageBox = box;
    box->cSetButtons(BUTTONS_OK);
    box->cSetOpenExternalLinks(openExternalLinks);
    box->cSetContent(hasTitle ? second : first);
    box->cSetTextTitle(hasTitle ? first : QString());
    box->cSetHintStyle(hintStyle);
    box->cEndSetParameter();
    box->setModal(true);
    box->show();
}

int VexaFeatureTree::loadingKey() const
{
    return m_nDeviceType == DEVICE_TYPE_CL ? static_cast<int>(m_lCameraID) + LOADING_KEY_CL_OFFSET
                                           : LOADING_KEY;
}

void VexaFeatureTree::ShowLoadingDlg(bool show, const QString &text)
{
    if (m_lCameraID == NO_CAMERA_ID) {
        return;
    }
    if (show) {
        CustomLoadingDialog::showLoading(text, loadingKey());
    } else {
        CustomLoadingDialog::hideLoading(loadingKey());
    }
}

void VexaFeatureTree::ShowLoadingFeatures(bool show, bool setting)
{
    if (m_nDeviceType != DEVICE_TYPE_CL) {
        return;
    }
    if (!show && m_pLockAndRelativeThread && m_pLockAndRelativeThread->isRunning()) {
        return;
    }
    ShowLoadingDlg(show,
                   WriteMessages::translated(setting ? "lang_qfeaturetree_settingfeatures"
                                                     : "lang_qfeaturetree_updatefeature"));
    const TreeCallScope scope(this);
    QCoreApplication::processEvents();
}

void VexaFeatureTree::hideLoading()
{
    ShowLoadingDlg(false, QString());
}
