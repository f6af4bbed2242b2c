#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QString>

class QWidget;

/// Shows beside a widget why its text was refused: a bubble, and the accessible description while the mark lives.
/// GUI thread.
class RefusalMark : public QObject
{
    Q_OBJECT
public:
    RefusalMark(QWidget *widget, const QString &reason);
    ~RefusalMark() override;
    /// Takes the bubble and the description back; the widget may go afterwards.
    void end();

signals:
    /// The user has had the time to read it.
    void expired();

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void showBubble();

    QWidget *m_pWidget; ///< null after the end
    QString m_strBubble;
    QString m_strFormerDescription;
    QBasicTimer m_expiry;
};
