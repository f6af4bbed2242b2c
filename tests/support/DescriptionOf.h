#pragma once

#include <QByteArray>
#include <QStringList>

/// A GenICam description around these elements, with a Root category that holds the features named in `rootFeatures`.
inline QByteArray descriptionOf(const QStringList &rootFeatures, const QByteArray &elements)
{
    QByteArray root = "<Category Name=\"Root\">";
    for (const QString &feature : rootFeatures) {
        root += "<pFeature>" + feature.toUtf8() + "</pFeature>";
    }
    root += "</Category>\n";
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<RegisterDescription ModelName=\"Test\" VendorName=\"Test\" StandardNameSpace=\"None\" "
           "SchemaMajorVersion=\"1\" SchemaMinorVersion=\"1\" SchemaSubMinorVersion=\"0\" "
           "MajorVersion=\"1\" MinorVersion=\"0\" SubMinorVersion=\"0\" ToolTip=\"\" "
           "ProductGuid=\"1\" VersionGuid=\"1\" "
           "xmlns=\"http://www.genicam.org/GenApi/Version_1_1\">\n"
        + root + elements + "<Port Name=\"Device\"/>\n</RegisterDescription>\n";
}

/// A register of four bytes that holds a signed number.
inline QByteArray intReg(const QByteArray &name, quint64 address)
{
    return "<IntReg Name='" + name + "'><Address>" + QByteArray::number(address)
        + "</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort>"
          "<Sign>Signed</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}
