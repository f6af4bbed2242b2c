#include "tests/realdevices/ToolValues.h"

#include <QProcess>
#include <QRegularExpression>

namespace {

constexpr int TIME_LIMIT = 30000; ///< ms

} // namespace

QMap<QString, ToolValue> ToolValues::of(const QString &address, QString *error)
{
    QProcess tool;
    tool.start(QStringLiteral("arv-tool-0.8"), {"-a", address, "values"});
    if (!tool.waitForFinished(TIME_LIMIT) || tool.exitCode() != 0) {
        *error = QStringLiteral("arv-tool-0.8: ") + tool.errorString()
            + QString::fromUtf8(tool.readAllStandardError());
        tool.kill();
        tool.waitForFinished();
        return {};
    }
    // "    Float        : [RW] 'Gain' = 6.5 dB"; texts and entries stand in quotes.
    static const QRegularExpression LINE(
        QStringLiteral("^\\s*(\\w+)\\s*: \\[\\w+\\] '(\\w+)' = (.*)$"));
    QMap<QString, ToolValue> values;
    const QStringList lines = QString::fromUtf8(tool.readAllStandardOutput()).split('\n');
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = LINE.match(line);
        if (!match.hasMatch()) {
            continue;
        }
        QString text = match.captured(3);
        if (text.size() >= 2 && text.startsWith('\'') && text.endsWith('\'')) {
            text = text.mid(1, text.size() - 2);
        }
        values.insert(match.captured(2), {match.captured(1), text});
    }
    if (values.isEmpty()) {
        *error = QStringLiteral("arv-tool-0.8 printed no value");
    }
    return values;
}
