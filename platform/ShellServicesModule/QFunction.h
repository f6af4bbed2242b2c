#pragma once

#include "ShellServicesModule/ShellServicesModuleGlobal.h"

#include <QObject>
#include <QString>

class QColor;
class QWidget;

/// Levels of the client's message log.
enum _MESSAGE_LOG_LEVEL_ { MESSAGE_LOG_INFO = 0, MESSAGE_LOG_WARNING = 1, MESSAGE_LOG_ERROR = 2 };

/// The client's message log and prompts. All operations but ShowMessage: any thread; the signals come on the thread
/// of the caller.
class SHELLSERVICESMODULE_API QFunction : public QObject
{
    Q_OBJECT
public:
    static QFunction *Instance();

    /// A line of the message log; `camera` is the display name, empty for the client itself.
    void InsertMessageLog(_MESSAGE_LOG_LEVEL_ level, const QString &camera, const QString &text);
    /// A prompt that the host shows; `level` 2 is a hint, 3 a failure. `richText` says that the text is markup.
    void SendShowPromptSignal(long int cameraId, int level, const QString &text,
                              const QString &title, bool richText);
    /// A message box that does not block; GUI thread. The content is `second` under the title `first`; with an empty
    /// `second` it is `first`, without a title. `third` is not shown. `hintStyle`: 1 advice, 2 notice, 3 failure,
    /// 5 success.
    static void ShowMessage(QWidget *parent, const QString &first, const QString &second,
                            const QString &third, int hintStyle, bool openExternalLinks);
    /// The text as an HTML fragment in that colour: markup in it is escaped, line ends become breaks, runs of spaces
    /// stay. An empty text gives an empty fragment.
    static QString stringToHtmlFilter(const QString &text, const QColor &colour, bool bold);

Q_SIGNALS:
    /// A line was added to the message log; the host shows it.
    void messageLogged(int level, QString camera, QString text);
    void promptRequested(long int cameraId, int level, QString text, QString title, bool richText);

private:
    QFunction();
};
