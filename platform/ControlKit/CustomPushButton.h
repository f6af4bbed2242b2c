#pragma once

#include "ControlKit/CustomQssHelper.h"

#include <QMap>
#include <QPushButton>

/// A push button. Styles: 1 accent, 2 plain dark.
class CONTROLKIT_API CustomPushButton : public QPushButton, public CustomQssHelper
{
    Q_OBJECT
public:
    explicit CustomPushButton(int style, QWidget *parent = nullptr);
    CustomPushButton(int style, const QString &text, QWidget *parent = nullptr);
    ~CustomPushButton() override;

    int cStyle() const { return m_nStyle; }
    /// Path of the icon for a state; states without one use that of the normal state.
    void cSetIcon(const QString &path, Custom::ItemStatus status = Custom::STATUS_NORMAL);
    /// Where the icon stands and its size in logical pixels.
    void cSetIconAlign(Qt::Alignment alignment, const QSize &size);
    Qt::Alignment cIconAlign() const { return m_iconAlign; }
    /// The icon that is drawn in a state; empty when cSetIcon never gave one.
    QString cIconPath(Custom::ItemStatus status) const;
    /// Whether the state has an icon of its own.
    bool cHasIcon(Custom::ItemStatus status) const { return m_iconPaths.contains(status); }
    /// 1: clicks are let through at most once every 300 ms, so that a double click runs a command once. 0: all.
    void cSetControlClickEvent(int mode);

protected:
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    bool isTooSoon() const;

    int m_nStyle;
    QMap<int, QString> m_iconPaths; ///< by Custom::ItemStatus
    int m_nClickMode = 0;
    qint64 m_nLastClick = -1; ///< milliseconds of a clock that only runs forward; -1: never
    Qt::Alignment m_iconAlign = Qt::AlignLeft;
};
