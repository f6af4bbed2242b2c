#include "host/workbench/NodeWritability.h"

#include "tree/VexaFeatureTree.h"

#include <QDomElement>

namespace {

/// Of references between nodes; a device's description may run in circles.
constexpr int MAX_DEPTH = 32;
const QLatin1String READ_ONLY("RO");

bool says(const QDomElement &node, const char *child)
{
    return node.firstChildElement(QLatin1String(child)).text().trimmed() == READ_ONLY;
}

} // namespace

bool NodeWritability::isNeverWritable(const VexaFeatureTree &tree, const QString &name)
{
    QString next = name;
    for (int depth = 0; depth < MAX_DEPTH; ++depth) {
        QDomElement node;
        if (next.isEmpty() || !tree.GetDomElementNode(next, node)) {
            return false;
        }
        const QString tag = node.tagName();
        if (says(node, "ImposedAccessMode") || says(node, "AccessMode")
            || tag.endsWith(QLatin1String("SwissKnife"))
            || (tag == QLatin1String("StructEntry")
                && says(node.parentNode().toElement(), "AccessMode"))) {
            return true;
        }
        next = node.firstChildElement(QStringLiteral("pValue")).text().trimmed();
    }
    return false;
}
