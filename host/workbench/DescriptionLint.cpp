#include "host/workbench/DescriptionLint.h"

#include "host/devicetask/DescriptionReport.h"

#include <QFile>
#include <QTextStream>

int lintDescription(const QString &path)
{
    QTextStream errors(stderr);
    errors.setCodec("UTF-8");
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        errors << path << ": " << file.errorString() << Qt::endl;
        return 1;
    }
    // A byte more than is allowed, so that the file is refused and not cut.
    const QByteArray xml = file.read(DescriptionReport::maxSize() + 1);
    if (file.error() != QFileDevice::NoError) {
        errors << path << ": " << file.errorString() << Qt::endl;
        return 1;
    }
    const DescriptionReport report = DescriptionReport::of(xml);
    QTextStream out(stdout);
    out.setCodec("UTF-8");
    for (const DescriptionReport::Finding &finding : report.findings) {
        out << path << ':' << finding.line << ": " << finding.node << ": " << finding.reason
            << '\n';
    }
    out.flush();
    errors << path << ": " << report.findings.size() << " findings, " << report.leftOut << " of "
           << report.nodes << " nodes are left out" << Qt::endl;
    return report.findings.isEmpty() ? 0 : 1;
}
