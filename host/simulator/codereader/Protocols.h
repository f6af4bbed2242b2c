#pragma once

#include "host/simulator/description/FeatureTable.h"

/// A protocol by which results leave the reader. Its names begin with the prefix.
struct ProtocolRow
{
    const char *m_strPrefix;
    const char *m_strTitle;
    const char *m_strTitleCn;
    const char *m_strAvailable; ///< node that is 1 while CommunicationProtocols selects it
    const char *m_strSelected; ///< formula of that node over P
};

/// All of them. The numbers of CommunicationProtocols stand in the formulas.
const QVector<ProtocolRow> &readerProtocols();
/// By prefix; an unknown one is a fault of the program.
const ProtocolRow &readerProtocol(const QByteArray &prefix);
