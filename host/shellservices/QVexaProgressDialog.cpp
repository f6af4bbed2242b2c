#include "ShellServicesModule/QVexaProgressDialog.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QVBoxLayout>

namespace {
constexpr int kSteps = 1000; ///< of the bar, whose own numbers are 32-bit
constexpr int kWidth = 380;
constexpr int kMargin = 24;
} // namespace

class QVexaProgressDialog::Private
{
public:
    bool isEnded() const { return nTotal > 0 && nCurrent >= nTotal; }

    void show()
    {
        const qint64 nShown = qBound<qint64>(0, nCurrent, qMax<qint64>(0, nTotal));
        pBar->setRange(0, nTotal > 0 ? kSteps : 0);
        if (nTotal > 0) {
            pBar->setValue(static_cast<int>(double(nShown) / double(nTotal) * kSteps));
        }
        const QLocale plain = QLocale::c();
        pBytes->setText(nTotal > 0 ? plain.formattedDataSize(nShown) + QLatin1String(" / ")
                                + plain.formattedDataSize(nTotal)
                                   : plain.formattedDataSize(qMax<qint64>(0, nCurrent)));
    }

    QProgressBar *pBar = nullptr;
    QLabel *pBytes = nullptr;
    qint64 nTotal = 0;
    qint64 nCurrent = 0;
};

QVexaProgressDialog::QVexaProgressDialog(bool isImport, QWidget *parent)
    : CustomMainWindow(parent)
    , d(std::make_unique<Private>())
{
    auto *pContent = new QWidget;
    d->pBar = new QProgressBar(pContent);
    d->pBar->setTextVisible(false);
    d->pBytes = new QLabel(pContent);
    d->pBytes->setAlignment(Qt::AlignRight);
    auto *pLayout = new QVBoxLayout(pContent);
    pLayout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    pLayout->addWidget(d->pBar);
    pLayout->addWidget(d->pBytes);
    pContent->setMinimumWidth(kWidth);

    cTitleBar()->cSetTitleControls(0);
    cSetCentralWidget(pContent);
    cSetEnableButtonBar(false);
    cSetStrechEdges(0);
    initInfo(isImport);
}

QVexaProgressDialog::~QVexaProgressDialog() = default;

void QVexaProgressDialog::initInfo(bool isImport)
{
    const QString strTitle = isImport
        ? QCoreApplication::translate("QFileAccessDialog", "lang_qfileaccessdialog_importing")
        : QCoreApplication::translate("QFileAccessDialog", "lang_qfileaccessdialog_exporting");
    cTitleBar()->cSetTitleText(strTitle);
    setWindowTitle(strTitle);
    d->pBar->setAccessibleName(strTitle);
    d->nTotal = 0;
    d->nCurrent = 0;
    d->show();
}

void QVexaProgressDialog::setTotalBytes(qint64 bytes)
{
    d->nTotal = bytes;
    d->show();
}

void QVexaProgressDialog::setCurBytes(qint64 bytes)
{
    d->nCurrent = bytes;
    d->show();
}

void QVexaProgressDialog::closeEvent(QCloseEvent *event)
{
    if (event->spontaneous() && !d->isEnded()) {
        event->ignore();
        return;
    }
    CustomMainWindow::closeEvent(event);
}

void QVexaProgressDialog::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && !d->isEnded()) {
        event->accept();
        return;
    }
    CustomMainWindow::keyPressEvent(event);
}
