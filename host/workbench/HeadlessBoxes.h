#pragma once

#include <QObject>

class CustomMessageBox;

/// Stands in for the user of a headless run: every message box goes into the message log and is closed, every question
/// is answered. Without it a box would wait for ever.
class HeadlessBoxes : public QObject
{
    Q_OBJECT
public:
    /// `yes`: what questions are answered with.
    explicit HeadlessBoxes(bool yes, QObject *parent = nullptr);
    /// How many boxes it has closed.
    int count() const { return m_nCount; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void take(CustomMessageBox &box);

    bool m_bYes;
    int m_nCount = 0;
};
