#include "fileaccess/QVexaFileAccessDialog.h"

#include "ControlKit/Custom.h"
#include "ControlKit/CustomComboBox.h"
#include "ControlKit/CustomLabel.h"
#include "ControlKit/CustomMessageBox.h"
#include "ControlKit/CustomSaveDoneHintDlg.h"
#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "DeviceTaskModule/QTaskManager.h"
#include "ShellServicesModule/QVexaProgressDialog.h"
#include "UtilityKit/VexaInterface.h"
#include "fileaccess/DeviceFileKinds.h"
#include "fileaccess/QVexaFileAccessThread.h"
#include "model/CTreeEnumationItemValue.h"
#include "model/VexaPropertyTreeItem.h"
#include "shell/VexaMainFeatureWidget.h"
#include "tree/VexaFeatureTree.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QEvent>
#include <QPointer>
#include <QTextDocument>
#include <QThread>
#include <QTimer>

namespace {

using Worker = QVexaFileAccessThread;

enum ButtonIndex { BUTTON_IMPORT = 0, BUTTON_EXPORT = 1 };

constexpr int ONLY_CUSTOM_BUTTONS = 4;
constexpr int EDGE = 20;
constexpr int LABEL_GAP = 30;
constexpr int BELOW = 10;
constexpr int LABEL_FONT_PIXELS = 13;
constexpr int PROGRESS_MS = 200;
constexpr int SAVE_HINT_MS = 2000;
constexpr int YES_NO = 3;
const QSize COMBO_SIZE(180, 25);

// The device's first user set goes by a name without its number.
const QLatin1String FIRST_USER_SET("User Set 1");
const QLatin1String USER_SET("User Set");
const QLatin1String BASE_USER_SET("Base User Set 1");
const QLatin1String DESCRIPTION_FILE("FeaturesXml");

QString translated(const char *key)
{
    return QCoreApplication::translate("QFileAccessDialog", key);
}

} // namespace

QVexaFileAccessDialog::QVexaFileAccessDialog(long int cameraId, QWidget *parent)
    : CustomMainWindow(parent)
    , m_lCameraID(cameraId)
    , m_pWorker(new Worker(cameraId, this))
    , m_pSelectorItem(std::make_unique<VexaPropertyTreeItem>())
{
    m_pSelectorItem->setTagName(QStringLiteral("Enumeration"));
    m_pSelectorItem->value()->m_strNodeName = QStringLiteral("FileSelector");
    connect(m_pWorker, &Worker::SigEndFileAccessThread, this, &QVexaFileAccessDialog::onEndThread,
            Qt::QueuedConnection);
    makeContent();
    setTexts();
    fillCombo();
    connect(m_pSelectorCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &QVexaFileAccessDialog::onComboboxChanged);
    connect(this, &CustomMainWindow::customButtonClicked, this,
            &QVexaFileAccessDialog::onButtonCliked);
    onComboboxChanged();
    VexaListenTools::instance()->addListener(this, PRIORITY_LEVEL_1);
}

QVexaFileAccessDialog::~QVexaFileAccessDialog()
{
    VexaListenTools::instance()->removeListener(this);
    letGoOfWorker();
}

void QVexaFileAccessDialog::makeContent()
{
    cTitleBar()->cSetTitleControls(CustomTitleBar::CLOSE);
    cTitleBar()->setFixedHeight(CustomTitleBar::HEIGHT);
    auto *content = new QWidget;
    m_pLabel = new CustomLabel(content);
    m_pLabel->cSetFontSize(LABEL_FONT_PIXELS);
    m_pLabel->cSetFontColor(QColor(QStringLiteral("#D1D1D1")));
    m_pSelectorCombo = new CustomComboBox;
    m_pSelectorCombo->setFixedSize(COMBO_SIZE);
    m_pLabel->setBuddy(m_pSelectorCombo);
    QBoxLayout *row = Custom::createLayout(Qt::Horizontal);
    row->addSpacing(EDGE);
    row->addWidget(m_pLabel);
    row->addSpacing(LABEL_GAP);
    row->addWidget(m_pSelectorCombo);
    row->addSpacing(EDGE);
    QBoxLayout *column = Custom::createLayout(Qt::Vertical);
    content->setLayout(column);
    column->addSpacing(EDGE);
    column->addLayout(row);
    column->addSpacing(BELOW);
    cSetCentralWidget(content);
    cSetButtons(ONLY_CUSTOM_BUTTONS);
    cAddCustomButtons({QString(), QString()});
    cSetEnableButtonBar(true);
}

void QVexaFileAccessDialog::setTexts()
{
    const QString title = translated("lang_qfileaccessdialog_fileacceess");
    cTitleBar()->cSetTitleText(title);
    setWindowTitle(title);
    m_pLabel->setText(translated("lang_qfileaccessdialog_deviceparameter"));
    m_pSelectorCombo->setAccessibleName(m_pLabel->text());
    cButton(BUTTON_IMPORT)->setText(translated("lang_qfileaccessdialog_import"));
    cButton(BUTTON_EXPORT)->setText(translated("lang_qfileaccessdialog_export"));
}

void QVexaFileAccessDialog::changeEvent(QEvent *event)
{
    CustomMainWindow::changeEvent(event);
    if (event->type() == QEvent::LanguageChange) {
        setTexts();
    }
}

void QVexaFileAccessDialog::fillCombo()
{
    VexaFeatureTree *tree =
        VexaMainFeatureWidget::instance()->getAllFeatureTreesMap().value(m_lCameraID);
    const CTreeEnumationItemValue *value = selectorValue();
    if (!tree || !value) {
        return;
    }
    tree->getFeatureValueFromCamera(m_pSelectorItem.get());
    QStringList texts = value->getDisplayList();
    const int first = texts.indexOf(FIRST_USER_SET);
    if (first >= 0) {
        texts[first] = USER_SET;
    }
    texts.removeAll(DESCRIPTION_FILE);
    m_pSelectorCombo->addItems(texts);
    const int userSet =
        m_pSelectorCombo->findText(USER_SET, Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_pSelectorCombo->setCurrentIndex(
        userSet >= 0
            ? userSet
            : m_pSelectorCombo->findText(BASE_USER_SET, Qt::MatchExactly | Qt::MatchCaseSensitive));
}

CTreeEnumationItemValue *QVexaFileAccessDialog::selectorValue() const
{
    return dynamic_cast<CTreeEnumationItemValue *>(m_pSelectorItem->value());
}

QString QVexaFileAccessDialog::entryName() const
{
    const QString text = m_pSelectorCombo->currentText();
    const CTreeEnumationItemValue *value = selectorValue();
    return value ? value->getAllNameMap().key(text == USER_SET ? QString(FIRST_USER_SET) : text)
                 : QString();
}

QCameraTask *QVexaFileAccessDialog::cameraTask() const
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *basicTask = manager ? manager->GetTaskByIDEx(m_lCameraID) : nullptr;
    return basicTask ? basicTask->_CameraTak() : nullptr;
}

bool QVexaFileAccessDialog::isTransferring() const
{
    return m_pWorker && m_pWorker->isRunning();
}

void QVexaFileAccessDialog::onComboboxChanged()
{
    const DeviceFileKind &kind = DeviceFileKinds::of(m_pSelectorCombo->currentText());
    const bool may = m_pSelectorCombo->count() > 0 && m_pWorker && !isTransferring();
    cButton(BUTTON_IMPORT)->setEnabled(may && kind.isImported);
    cButton(BUTTON_EXPORT)->setEnabled(may && kind.isExported);
}

void QVexaFileAccessDialog::onButtonCliked(int nIndex)
{
    if (!m_pWorker || isTransferring()) {
        return;
    }
    if (nIndex == BUTTON_IMPORT) {
        importFile();
    } else {
        exportFile();
    }
}

void QVexaFileAccessDialog::exportFile()
{
    QTaskManager *manager = QTaskManager::Instance();
    QCameraBasicTask *basicTask = manager ? manager->GetTaskByIDEx(m_lCameraID) : nullptr;
    if (!basicTask || !selectorValue()) {
        return;
    }
    const QString text = m_pSelectorCombo->currentText();
    QString name =
        QStringLiteral("%1_%2_%3")
            .arg(basicTask->_GetCameraModelName(), basicTask->_GetCameraSerialNum(), text);
    name.replace(QLatin1Char('/'), QLatin1Char('-'));
    const QPointer<QVexaFileAccessDialog> self(this);
    const QString path =
        VexaInterface::getSaveFileName(this, translated("lang_qfileaccessdialog_choosefile"), name,
                                       QLatin1String(DeviceFileKinds::of(text).exportFilter));
    if (self && !path.isEmpty()) {
        startTransfer(Worker::DIRECTION_EXPORT, path, entryName());
    }
}

void QVexaFileAccessDialog::importFile()
{
    const DeviceFileKind &kind = DeviceFileKinds::of(m_pSelectorCombo->currentText());
    const QPointer<QVexaFileAccessDialog> self(this);
    const QString path =
        VexaInterface::getOpenFileName(this, translated("lang_qfileaccessdialog_choosefile"),
                                       QString(), QLatin1String(kind.importFilter));
    if (!self || path.isEmpty()) {
        return;
    }
    if (!path.endsWith(QLatin1String(kind.importEnding))) {
        CustomMessageBox::warning(this, translated("lang_qfileaccessdialog_badfile"),
                                  promptTitle());
        return;
    }
    startTransfer(Worker::DIRECTION_IMPORT, path, entryName());
}

void QVexaFileAccessDialog::startTransfer(int direction, const QString &path,
                                          const QString &fileName)
{
    if (!m_pWorker || isTransferring()) {
        return;
    }
    m_strLastPath = path;
    m_nDirection = direction;
    m_pWorker->setJob(direction, path, fileName);
    m_pWorker->start(QThread::InheritPriority);
    onComboboxChanged();

    const bool isImport = direction == Worker::DIRECTION_IMPORT;
    if (!m_pProgressDialog) {
        m_pProgressDialog = new QVexaProgressDialog(isImport, this);
        m_pProgressTimer = new QTimer(this);
        connect(m_pProgressTimer, &QTimer::timeout, this, &QVexaFileAccessDialog::updateProgress);
    } else {
        m_pProgressDialog->initInfo(isImport);
    }
    m_pProgressTimer->start(PROGRESS_MS);
    m_pProgressDialog->exec();
}

void QVexaFileAccessDialog::updateProgress()
{
    QCameraTask *task = cameraTask();
    if (!m_pProgressDialog || !task) {
        return;
    }
    qint64 total = -1;
    qint64 done = -1;
    if (task->GetFileAccessProgress(&total, &done) == 0) {
        m_pProgressDialog->setTotalBytes(total);
        m_pProgressDialog->setCurBytes(done);
    }
}

void QVexaFileAccessDialog::onEndThread(int nThreadType, bool bResult, QString strError)
{
    if (m_pProgressDialog) {
        m_pProgressDialog->setTotalBytes(0);
        m_pProgressDialog->setCurBytes(0);
        m_pProgressDialog->close();
    }
    if (!m_pProgressTimer || !m_pWorker) {
        return;
    }
    m_pProgressTimer->stop();
    m_pWorker->wait(); // it has nothing left to do but to end
    onComboboxChanged();
    if (nThreadType == Worker::DIRECTION_EXPORT && bResult) {
        const QString path = QString(m_strLastPath).replace(QLatin1Char('/'), QLatin1Char('\\'));
        const QString message = translated("lang_qfileaccessdialog_exportsuccess");
        const QString argument = QStringLiteral("/select,%1").arg(path);
        const QPointer<CustomSaveDoneHintDlg> hint =
            new CustomSaveDoneHintDlg(this, message, argument);
        hint->SetMsgText(message, argument, true, SAVE_HINT_MS);
        hint->exec();
        delete hint;
    } else if (nThreadType == Worker::DIRECTION_EXPORT) {
        tellFailure("lang_qfileaccessdialog_exportfailed", strError);
    } else if (nThreadType == Worker::DIRECTION_IMPORT && bResult) {
        askForRestart();
    } else if (nThreadType == Worker::DIRECTION_IMPORT) {
        tellFailure("lang_qfileaccessdialog_importfailed", strError);
    }
}

void QVexaFileAccessDialog::tellFailure(const char *key, const QString &error)
{
    const QString remark = m_pWorker->remark();
    m_strUnread =
        translated(key) + error + (remark.isEmpty() ? QString() : QStringLiteral("\r\n") + remark);
    if (Qt::mightBeRichText(m_strUnread)) {
        m_strUnread = m_strUnread.toHtmlEscaped(); // a path with brackets
    }
    const QPointer<QVexaFileAccessDialog> self(this);
    CustomMessageBox::information(this, m_strUnread, promptTitle());
    if (self && m_pWorker) {
        m_strUnread.clear();
    }
}

void QVexaFileAccessDialog::askForRestart()
{
    const QPointer<QVexaFileAccessDialog> self(this);
    const int answer = CustomMessageBox::ask(
        this, translated("lang_qfileaccessdialog_importsuccess"), promptTitle(), YES_NO);
    if (!self || answer != 1) {
        return;
    }
    long int cameraId = m_lCameraID;
    VexaListenTools::instance()->notifyListeners(VEXA_EVENT_RESET_DEVICE, &cameraId);
    if (self) {
        close();
    }
}

QString QVexaFileAccessDialog::lastWords() const
{
    return m_pWorker ? QString() : m_strUnread;
}

QString QVexaFileAccessDialog::promptTitle()
{
    return translated("lang_qfileaccessdialog_prompt");
}

void QVexaFileAccessDialog::notify(int event, void *data)
{
    if (event != VEXA_EVENT_BEFORE_DELETE_FEATURE_TREE || !data
        || *static_cast<const long int *>(data) != m_lCameraID) {
        return;
    }
    // At once on the GUI thread, which is where trees are removed.
    QMetaObject::invokeMethod(this, &QVexaFileAccessDialog::cameraGone, Qt::AutoConnection);
}

void QVexaFileAccessDialog::cameraGone()
{
    if (m_pProgressTimer) {
        m_pProgressTimer->stop();
    }
    if (isTransferring()) {
        m_strUnread = translated(m_nDirection == Worker::DIRECTION_EXPORT
                                     ? "lang_qfileaccessdialog_exportfailed"
                                     : "lang_qfileaccessdialog_importfailed")
            + Worker::errorText(Worker::NO_TASK);
    }
    letGoOfWorker();
    onComboboxChanged();
    // Whatever this dialog has open: their loops end one after the other.
    const QList<QDialog *> open = findChildren<QDialog *>();
    for (QDialog *dialog : open) {
        dialog->close();
    }
    close();
}

void QVexaFileAccessDialog::letGoOfWorker()
{
    Worker *worker = std::exchange(m_pWorker, nullptr);
    if (!worker) {
        return;
    }
    // Its transfer may hang in the device, for which nobody waits here.
    disconnect(worker, nullptr, this, nullptr);
    worker->setParent(nullptr);
    connect(worker, &QThread::finished, worker, &QObject::deleteLater);
    if (!worker->isRunning()) {
        worker->deleteLater();
    }
}
