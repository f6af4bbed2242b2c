#pragma once

#include "ControlKit/CustomMainWindow.h"
#include "model/FeatureFileValues.h"

#include <QMutex>

class CustomPushButton;
class QStandardItemModel;
class QTableView;

/// Lists by category what an import would change; exec() answers 1 when the user lets it go on. It changes nothing
/// by itself. GUI thread.
class VexaFeatureDiff : public CustomMainWindow
{
    Q_OBJECT
public:
    explicit VexaFeatureDiff(QWidget *parent = nullptr);

    /// Replaces content and rows.
    void setDiffs(const FeatureDifferences &diffs);

protected:
    void changeEvent(QEvent *event) override;

private Q_SLOTS:
    void onButtonClicked();

private:
    void makeTable();
    CustomPushButton *makeButton(int style, const QString &answer);
    QWidget *makeButtonBar();
    void setTexts();

    FeatureDifferences m_diffs;
    QMutex m_diffMutex; ///< while m_diffs and the model are rebuilt
    QTableView *m_pTable;
    QStandardItemModel *m_pModel;
    CustomPushButton *m_pOkButton = nullptr;
    CustomPushButton *m_pCancelButton = nullptr;
};
