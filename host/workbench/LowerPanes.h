#pragma once

#include <QMap>
#include <QTabWidget>

class MessageLogPanel;
class ReaderTables;
class ReaderTablesPanel;

/// What stands below the feature tree: the message log, and for a code reader the tables beside it, a tab each.
class LowerPanes : public QTabWidget
{
    Q_OBJECT
public:
    explicit LowerPanes(QWidget *parent = nullptr);
    ~LowerPanes() override;

    MessageLogPanel *messages() const { return m_pMessages; }
    /// Of the camera on show; null for none.
    void setTables(ReaderTables *tables);

signals:
    /// Another pane is on show, which had or needs this height.
    void heightWanted(int height);

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void retranslate();
    void onCurrentChanged();

    MessageLogPanel *m_pMessages;
    ReaderTablesPanel *m_pTables;
    QMap<const QWidget *, int> m_heights; ///< by pane, as the user left them
};
