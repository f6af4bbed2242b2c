#include "host/devicetask/DescriptionReport.h"

#include "host/devicetask/nodes/DescriptionText.h"
#include "host/devicetask/nodes/NodeTableCheck.h"
#include "host/devicetask/nodes/NodeTableReader.h"

int DescriptionReport::maxSize()
{
    return NodeTableReader::MAX_SIZE;
}

DescriptionReport DescriptionReport::of(const QByteArray &xml)
{
    DescriptionReport report;
    NodeTable table;
    QString reason;
    int line = 1;
    if (!NodeTableReader::read(NodeTableReader::withoutPadding(xml), &table, &reason, &line)) {
        reason.chop(reason.endsWith('.') ? 1 : 0);
        report.findings.append({QStringLiteral("RegisterDescription"), line, reason, true});
        return report;
    }
    for (const NodeFault &fault : NodeTableCheck::findProblems(&table)) {
        report.findings.append({QString::fromUtf8(DescriptionText::shown(fault.node)), fault.line,
                                QString::fromUtf8(fault.reason), !fault.isHarmless});
    }
    report.nodes = table.count();
    for (NodeId id = 0; id < table.count(); ++id) {
        report.leftOut += table.at(id).problem.isEmpty() ? 0 : 1;
    }
    return report;
}
