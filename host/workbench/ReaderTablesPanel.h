#pragma once

#include "ControlKit/CustomWidget.h"

class QAbstractItemModel;
class QTableView;
class ReaderTables;

/// Shows the tables of the code reader on show: its polling parameters, and the code types beside them.
class ReaderTablesPanel : public CustomWidget
{
    Q_OBJECT
public:
    explicit ReaderTablesPanel(QWidget *parent = nullptr);
    ~ReaderTablesPanel() override;

    /// Null for a camera without tables. They may go while they are shown.
    void setTables(ReaderTables *tables);

protected:
    void changeEvent(QEvent *event) override;

private:
    static void show(QTableView &view, QAbstractItemModel *model);
    void retranslate();
    void fitColumns();

    QTableView *m_pPolling;
    QTableView *m_pCodeTypes;
};
