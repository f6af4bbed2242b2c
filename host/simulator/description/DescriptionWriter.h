#pragma once

#include <QByteArray>

class FeatureTable;

/// Who the described device is, for the attributes of RegisterDescription.
struct DescriptionHeader
{
    QByteArray m_strModelName;
    QByteArray m_strVendorName;
    QByteArray m_strToolTip;
    QByteArray m_strProductGuid;
    QByteArray m_strVersionGuid;
};

/// The table as a GenICam description of schema version 1.1, UTF-8.
QByteArray writtenDescription(const FeatureTable &table, const DescriptionHeader &header);
