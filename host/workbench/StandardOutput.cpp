#include "host/workbench/StandardOutput.h"

#include <cstdio>

namespace {

QString cell(const QString &text)
{
    QString shown;
    for (const QChar c : text) {
        switch (c.unicode()) {
        case '\t':
            shown += QLatin1String("\\t");
            break;
        case '\n':
            shown += QLatin1String("\\n");
            break;
        case '\r':
            shown += QLatin1String("\\r");
            break;
        default:
            if (c.category() != QChar::Other_Control) {
                shown += c;
            }
        }
    }
    return shown;
}

} // namespace

bool StandardOutput::write(const QByteArray &bytes)
{
    return std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stdout)
        == static_cast<std::size_t>(bytes.size())
        && std::fflush(stdout) == 0;
}

QByteArray StandardOutput::tableLine(const QStringList &cells)
{
    QStringList shown;
    for (const QString &text : cells) {
        shown += cell(text);
    }
    return shown.join(QLatin1Char('\t')).toUtf8() + '\n';
}
