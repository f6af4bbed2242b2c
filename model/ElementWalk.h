#pragma once

#include <QDomElement>
#include <QString>

/// Helpers to walk a device description. They build no lists, so that workers may use them on elements that several
/// threads share.
namespace ElementWalk {

/// The next element below `top` in document order after `present`; null at the end. No recursion: a description may
/// nest as deep as it likes.
QDomElement next(const QDomElement &present, const QDomElement &top, bool bIntoChildren = true);

/// Text of an element that names a node or holds a word; blanks around it do not count.
inline QString text(const QDomElement &element)
{
    return element.text().trimmed();
}

/// Attribute Name of a node.
inline QString name(const QDomElement &element)
{
    return element.attribute(QStringLiteral("Name"));
}

} // namespace ElementWalk
