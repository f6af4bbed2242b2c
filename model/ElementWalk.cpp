#include "model/ElementWalk.h"

QDomElement ElementWalk::next(const QDomElement &present, const QDomElement &top,
                              bool bIntoChildren)
{
    QDomElement found = bIntoChildren ? present.firstChildElement() : QDomElement();
    for (QDomElement up = present; found.isNull() && !up.isNull() && up != top;
         up = up.parentNode().toElement()) {
        found = up.nextSiblingElement();
    }
    return found;
}
