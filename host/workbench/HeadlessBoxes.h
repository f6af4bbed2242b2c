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

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void take(CustomMessageBox &box);
    void takeDifferences(QWidget &dialog);
    /// Once the dialog is up: one that blocks is about to start its event loop.
    static void answer(QWidget &dialog, bool yes);

    bool m_bYes;
};
