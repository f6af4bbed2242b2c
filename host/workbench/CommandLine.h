#pragma once

#include "host/workbench/WorkbenchOptions.h"

#include <QCommandLineParser>

/// The options of vexa-workbench: from arguments to a record, with a text for every wrong use.
class CommandLine
{
public:
    CommandLine();

    /// `arguments` begins with the name of the program. False for wrong usage; errorText then says why.
    bool parse(const QStringList &arguments);
    const WorkbenchOptions &options() const { return m_options; }
    QString errorText() const { return m_strError; }
    /// Needs a QCoreApplication.
    QString helpText() const { return m_parser.helpText(); }

private:
    bool fail(const QString &text);
    bool takeChoices();
    bool takeFeatureJobs();
    bool takeFileJobs();
    bool takeFeatureFileJobs();
    bool checkFeatureFileJobs();
    bool checkCombination();

    QCommandLineParser m_parser;
    WorkbenchOptions m_options;
    QString m_strError;
};
