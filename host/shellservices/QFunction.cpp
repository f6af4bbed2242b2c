#include "ShellServicesModule/QFunction.h"

#include "ControlKit/CustomMessageBox.h"
#include "host/shellservices/HtmlText.h"
#include "host/shellservices/ShellHost.h"

#include <QCoreApplication>
#include <QThread>

QFunction::QFunction()
{
    qRegisterMetaType<long>("long int"); // connections by text look the name up
}

QFunction *QFunction::Instance()
{
    static auto *const s_pInstance = [] {
        auto *pFunction = new QFunction;
        if (QCoreApplication::instance()) {
            pFunction->moveToThread(QCoreApplication::instance()->thread());
        }
        return pFunction;
    }();
    return s_pInstance;
}

void QFunction::InsertMessageLog(_MESSAGE_LOG_LEVEL_ level, const QString &camera,
                                 const QString &text)
{
    ShellHost::instance()->appendMessage({QDateTime::currentDateTime(), level, camera, text});
    emit messageLogged(level, camera, text);
}

void QFunction::SendShowPromptSignal(long int cameraId, int level, const QString &text,
                                     const QString &title, bool richText)
{
    emit promptRequested(cameraId, level, text, title, richText);
}

void QFunction::ShowMessage(QWidget *parent, const QString &first, const QString &second,
                            const QString &third, int hintStyle, bool openExternalLinks)
{
    Q_UNUSED(third)
    Q_ASSERT(QThread::currentThread() == QCoreApplication::instance()->thread());
    const bool bTitled = !second.isEmpty();
    auto *pBox = new CustomMessageBox(parent);
    pBox->setAttribute(Qt::WA_DeleteOnClose);
    pBox->cSetButtons(1);
    pBox->cSetOpenExternalLinks(openExternalLinks);
    pBox->cSetContent(bTitled ? second : first);
    pBox->cSetTextTitle(bTitled ? first : QString());
    pBox->cSetHintStyle(hintStyle);
    pBox->cEndSetParameter();
    pBox->setModal(true);
    pBox->show();
}

QString QFunction::stringToHtmlFilter(const QString &text, const QColor &colour, bool bold)
{
    return HtmlText::fragment(text, colour, bold);
}
