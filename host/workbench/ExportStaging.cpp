#include "host/workbench/ExportStaging.h"

#include "ControlKit/CustomSaveDoneHintDlg.h"
#include "ShellServicesModule/QFunction.h"
#include "host/utilitykit/FileDialogs.h"
#include "host/workbench/StagedFile.h"
#include "host/workbench/WorkbenchTexts.h"

#include <QDir>
#include <QEvent>
#include <QTextDocument>

#include <algorithm>

namespace {

constexpr int HINT_MS = 2000;
constexpr int HINT_FAILURE = 3;
const QLatin1String FEATURE_FILE_SUFFIX("vxf");

} // namespace

ExportStaging::ExportStaging(QObject *parent)
    : QObject(parent)
{
    QCoreApplication::instance()->installEventFilter(this);
    FileDialogs::setSaveNameHook(FEATURE_FILE_SUFFIX,
                                 [this](const QString &chosen) { return stage(chosen); });
}

ExportStaging::~ExportStaging()
{
    FileDialogs::setSaveNameHook(FEATURE_FILE_SUFFIX, nullptr);
}

QString ExportStaging::stage(const QString &chosen)
{
    m_files.push_back(std::make_unique<StagedFile>(chosen));
    return m_files.back()->path();
}

QString ExportStaging::withTargets(QString text) const
{
    for (const auto &staged : m_files) {
        text.replace(staged->path(), staged->target());
    }
    return text;
}

bool ExportStaging::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        auto *hint = qobject_cast<CustomSaveDoneHintDlg *>(watched);
        const auto file = std::find_if(m_files.begin(), m_files.end(), [hint](const auto &staged) {
            return hint && hint->toolTip() == QDir::toNativeSeparators(staged->path());
        });
        if (file != m_files.end()) {
            const std::unique_ptr<StagedFile> staged = std::move(*file);
            m_files.erase(file);
            putInPlace(*hint, *staged);
        }
    }
    return QObject::eventFilter(watched, event);
}

void ExportStaging::putInPlace(CustomSaveDoneHintDlg &hint, StagedFile &file)
{
    QString reason;
    if (file.commit(&reason)) {
        hint.SetMsgText(hint.windowTitle(), QDir::toNativeSeparators(file.target()), true, HINT_MS);
        return;
    }
    const QString text = workbenchText("lang_workbench_filetrouble").arg(file.target(), reason);
    QFunction::Instance()->InsertMessageLog(MESSAGE_LOG_ERROR, QString(), text);
    QMetaObject::invokeMethod(&hint, "reject", Qt::QueuedConnection);
    // Once the hint has gone.
    QMetaObject::invokeMethod(
        this,
        [this, text] {
            QFunction::ShowMessage(qobject_cast<QWidget *>(parent()), QString(),
                                   Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal), QString(),
                                   HINT_FAILURE, false);
        },
        Qt::QueuedConnection);
}
