#pragma once

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

class CustomSaveDoneHintDlg;
class StagedFile;

/// Keeps a feature file that an export from the tool bar replaces until the export has succeeded: a tree gets a name
/// beside the one that the user has chosen, and the file takes its place when the tree is about to tell of it.
/// One at a time, for the length of the window.
class ExportStaging : public QObject
{
    Q_OBJECT
public:
    explicit ExportStaging(QObject *parent);
    ~ExportStaging() override;

    /// What was said of an export that is under way or has failed, with the name that the user has chosen in it.
    QString withTargets(QString text) const;

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QString stage(const QString &chosen);
    void putInPlace(CustomSaveDoneHintDlg &hint, StagedFile &file);

    std::vector<std::unique_ptr<StagedFile>> m_files; ///< of exports under way or failed
};
