#pragma once

#include "ControlKit/CustomPushButton.h"
#include "ControlKit/CustomWidget.h"

#include <QDialog>

#include <memory>

/// Title bar of a framed dialog.
class CONTROLKIT_API CustomTitleBar : public CustomWidget
{
    Q_OBJECT
public:
    /// What the bar offers.
    enum Control { MINIMISE = 1, MAXIMISE = 2, CLOSE = 4 };
    static constexpr int HEIGHT = 40; ///< pixels

    explicit CustomTitleBar(QWidget *parent = nullptr);
    ~CustomTitleBar() override;
    void cSetTitleText(const QString &text);
    /// Bits of Control.
    void cSetTitleControls(int controls);

Q_SIGNALS:
    void closeClicked();

protected:
    void changeEvent(QEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};

/// A dialog with a frame of its own: title bar, central widget, button bar.
class CONTROLKIT_API CustomMainWindow : public QDialog, public CustomObject
{
    Q_OBJECT
public:
    explicit CustomMainWindow(QWidget *parent = nullptr);
    ~CustomMainWindow() override;

    /// Never null.
    CustomTitleBar *cTitleBar() const;
    /// Takes the widget over.
    void cSetCentralWidget(QWidget *widget);
    /// Standard buttons as bits: 1 OK, 2 Cancel; other bits are passed over. They accept and reject the dialog.
    void cSetButtons(int buttons);
    /// Further buttons with these texts, in order, left of the standard ones; cButton counts them from 0.
    void cAddCustomButtons(const QStringList &texts);
    CustomPushButton *cButton(int index) const;
    /// Shows or hides the bar with the buttons.
    void cSetEnableButtonBar(bool enable);
    /// A shadow around the frame.
    void cEnableDefualtShadow(bool enable = true);
    /// Where the user takes hold to resize the dialog, as bits: 1 right edge, 2 bottom edge, 4 top edge, 8 bottom
    /// right corner, 16 top left corner, 32 top right corner, 64 left edge, 128 bottom left corner. 0: nowhere.
    void cSetStrechEdges(int edges);
    /// 1: the dialog stays above its parent's window.
    void cSetWindowLever(int level);

Q_SIGNALS:
    /// A custom button was clicked.
    void customButtonClicked(int index);

protected:
    void changeEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
