#pragma once

#include <QObject>

class CustomMessageBox;

/// Stands in for the user of a headless run: every message box goes into the message log and is closed, every question
/// and the list of an import's differences is answered. Without it a box would wait for ever.
class HeadlessBoxes : public QObject
{
    Q_OBJECT
public:
    /// `yes`: what questions are answered with.
    explicit HeadlessBoxes(bool yes, QObject *parent = nullptr);
    /// How many boxes it has closed.
    int count() const { return m_nCount; }
    /// While on, every question is answered with no, and nobody is told: who set it has asked for the question.
    void setDecliningSilently(bool on) { m_bDeclinesSilently = on; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void take(CustomMessageBox &box);
    void takeDifferences(QWidget &dialog);
    /// Once the dialog is up: one that blocks is about to start its event loop.
    void answer(QWidget &dialog, bool yes);
    bool saysYes() const { return m_bYes && !m_bDeclinesSilently; }

    bool m_bYes;
    bool m_bDeclinesSilently = false;
    int m_nCount = 0;
};
