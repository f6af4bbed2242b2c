#pragma once

#include "tests/support/ModuleFixture.h"

#include <QMap>
#include <QRegularExpression>

// Descriptions of devices and of pages, in the few words that a row of a test table has room for.

/// One node of a description: "i:Name=3", "b:Name=1", "e:Name=Left,Up" (the first entry stands) or "s:Name=text".
inline QByteArray elementOf(const QString &strNode, int nIndex)
{
    const QString strName = strNode.section('=', 0, 0).mid(2);
    const QString strValue = strNode.section('=', 1);
    QString strBody = QStringLiteral("<Value>%1</Value>").arg(strValue);
    if (strNode.startsWith("e:")) {
        strBody.clear();
        const QStringList entries = strValue.split(',');
        for (int nEntry = 0; nEntry < entries.size(); ++nEntry) {
            strBody += QStringLiteral("<EnumEntry Name=\"%1\"><Value>%2</Value></EnumEntry>")
                           .arg(entries.at(nEntry))
                           .arg(nEntry);
        }
        strBody += QLatin1String("<Value>0</Value>");
    } else if (strNode.startsWith("s:")) {
        strBody = QStringLiteral("<Address>%1</Address><Length>32</Length><AccessMode>RW"
                                 "</AccessMode><pPort>Device</pPort>")
                      .arg(64 * nIndex);
    } else if (strNode.startsWith("c:")) {
        strBody = QStringLiteral("<pValue>SwitchReg</pValue><CommandValue>1</CommandValue>");
    }
    static const QMap<QChar, QString> tags{{'i', "Integer"},
                                           {'b', "Boolean"},
                                           {'e', "Enumeration"},
                                           {'s', "StringReg"},
                                           {'c', "Command"}};
    return QStringLiteral("<%1 Name=\"%2\">%3</%1>\n")
        .arg(tags.value(strNode.at(0)), strName, strBody)
        .toUtf8();
}

/// A device with these nodes, in a category of its own.
inline QByteArray deviceOf(const QString &strNodes)
{
    const QStringList nodes = strNodes.split(' ', Qt::SkipEmptyParts);
    QByteArray elements = "<IntReg Name=\"SwitchReg\"><Address>0x8000</Address><Length>4</Length>"
                          "<AccessMode>RW</AccessMode><pPort>Device</pPort></IntReg>\n";
    QByteArray category = "<Category Name=\"Nodes\">";
    for (int nNode = 0; nNode < nodes.size(); ++nNode) {
        elements += elementOf(nodes.at(nNode), nNode);
        category +=
            "<pFeature>" + nodes.at(nNode).section('=', 0, 0).mid(2).toUtf8() + "</pFeature>";
    }
    return descriptionOf({QStringLiteral("Nodes")}, category + "</Category>\n" + elements);
}

/// "A B(C)" as elements: what has brackets is a Category, all else a Feature.
inline QString pagesOf(const QString &strWords)
{
    QString strXml;
    QRegularExpression word(QStringLiteral("(\\w+)(\\(?)|\\)"));
    for (auto it = word.globalMatch(strWords); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        if (match.captured(0) == QLatin1String(")")) {
            strXml += QLatin1String("</Category>");
        } else if (match.captured(2).isEmpty()) {
            strXml += QStringLiteral("<Feature Name=\"%1\"/>").arg(match.captured(1));
        } else {
            strXml += QStringLiteral("<Category Name=\"%1\">").arg(match.captured(1));
        }
    }
    return strXml;
}
