#pragma once

#include <QByteArray>
#include <QMap>
#include <QRegularExpression>
#include <QString>
#include <QVector>

/// A feature file read line by line with patterns of its own, as far from the module's reader as can be.
struct FeatureFileLines
{
    struct Value
    {
        QString name, type, value;
    };
    struct Register
    {
        QString name, reg, variables, text, to, from;
        qint64 length = 0, address = 0;
    };
    QString error; ///< the first line that is not of the format; empty when all are
    QString version;
    QVector<QPair<QString, QString>> header;
    QVector<Value> values;
    QVector<Register> registers;
    QVector<QString> order; ///< names of all groups

    static FeatureFileLines of(const QByteArray &bytes)
    {
        FeatureFileLines file;
        QStringList lines = QString::fromUtf8(bytes).split("\r\n");
        const auto take = [&](const char *pattern) {
            const QRegularExpression expression(QString("^(?:%1)$").arg(pattern),
                                                QRegularExpression::DotMatchesEverythingOption);
            auto match = expression.match(lines.value(0));
            if (match.hasMatch()) {
                lines.removeFirst();
            }
            return match;
        };
        bool ok = take("<\\?xml version=\"1\\.0\" encoding=\"UTF-8\"\\?>").hasMatch();
        file.version = take("<FeaturesFile version=\"(.*)\">").captured(1);
        for (auto m = take("<(\\w+)>(.*)</\\1>"); m.hasMatch(); m = take("<(\\w+)>(.*)</\\1>")) {
            file.header.append({m.captured(1), m.captured(2)});
        }
        ok = take("<Features>").hasMatch() && ok;
        while (ok && lines.value(0) != "</Features>") {
            if (take("<Feature>").hasMatch()) {
                Value value{take("<Name>(.+)</Name>").captured(1),
                            take("<Type>(Boolean|Integer|IntReg|Enumeration|Float|StringReg)"
                                 "</Type>")
                                .captured(1),
                            QString()};
                const auto text = take("<Value>([^<>]*)</Value>");
                ok = !value.name.isEmpty() && !value.type.isEmpty() && text.hasMatch()
                    && take("<Streamable>Yes</Streamable>").hasMatch()
                    && take("</Feature>").hasMatch();
                value.value = text.captured(1).replace("&lt;", "<").replace("&gt;", ">");
                file.values.append(value);
                file.order.append(value.name);
                continue;
            }
            const auto head = take("<ComplexFeature name=\"(.+)\" len=\"(\\d+)\" reg=\"(.*)\">");
            ok = head.hasMatch();
            file.order.append(head.captured(1));
            while (ok && !take("</ComplexFeature>").hasMatch()) {
                const auto m =
                    take("<RegValue address=\"(\\d+)\" variables=\"((?:\\[[^\\]]+:[^\\]]+\\])*)\""
                         "(?: to=\"(\\d+)\" from=\"([^\"<>]*)\")?>([-\\d.,]+)</RegValue>");
                ok = m.hasMatch();
                Register row{head.captured(1), head.captured(3), m.captured(2),
                             m.captured(5),    m.captured(3),    m.captured(4)};
                row.length = head.captured(2).toLongLong();
                row.address = m.captured(1).toLongLong();
                ok =
                    ok && (!row.to.isEmpty() || row.text.split(',').size() == (row.length + 3) / 4);
                file.registers.append(row);
            }
        }
        if (!ok || lines != QStringList{"</Features>", "</FeaturesFile>"}) {
            file.error = "not of the format: " + lines.value(0).left(200);
        }
        return file;
    }
};
