#pragma once

#include "ControlKit/CustomWidget.h"
#include "editors/LightingAccess.h"
#include "editors/LightingLayout.h"
#include "model/IVexaFeatureNotify.h"

#include <QBasicTimer>
#include <QMutex>
#include <QVector>

#include <functional>
#include <optional>

class VexaPropertyTreeItem;

/// The picture of a light: each segment is switched by a click, or with the arrow keys and the space bar. It shows the
/// state of all segments, though the device answers for one at a time. GUI thread, but for the notifications.
class CLightingSelectorInterWidget : public CustomWidget, public IVexaFeatureNotify
{
    Q_OBJECT
public:
    /// `item` is the row; its value says what the light is made of.
    CLightingSelectorInterWidget(VexaPropertyTreeItem *item, QWidget *parent);
    ~CLightingSelectorInterWidget() override;

    /// Takes over what the row's value names now. Reads and writes nothing unless that has changed.
    void refill();

    const LightingAccess &light() const { return m_light; }
    bool isAllOn() const;
    /// Bits of the segments that are on.
    quint32 mask() const { return m_nMask; }
    /// Switches all segments: by the command for it, by the entry for all, or one after the other.
    void switchAll(bool on);

    void itemVisibleChanged(long, VexaPropertyTreeItem *item, bool) override;
    void itemDataChanged(long, VexaPropertyTreeItem *item, int nType, bool, bool) override;
    void itemReadOnlyChanged(long, VexaPropertyTreeItem *item, bool) override;

Q_SIGNALS:
    /// The state of the segments, or what can switch them all, may have changed.
    void sigStateChanged();

protected:
    void timerEvent(QTimerEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    /// Bits of what has changed.
    enum Change {
        CHANGE_ENABLE = 1,
        CHANGE_SELECTOR = 2,
        CHANGE_SETTING = 4, ///< and the next three bits
        CHANGE_BITMAP = 64,
        CHANGE_OTHER = 128
    };

    void watchItems();
    void unwatchItems();
    /// Any thread: keeps the change and posts.
    void noteChange(VexaPropertyTreeItem *pItem, bool bUserWrote);
    void takeChanges();
    void takeEnableChange();
    void takeSettingChange(int nSetting, bool bUserWrote);

    /// A sequence of own writes: what the tree tells meanwhile on this thread is not handled half-way. False when the
    /// picture went away in it.
    bool runOwnWrites(const std::function<void(const LightingAccess &)> &writes);
    void toggle(quint32 nBit);
    void toggleOne(quint32 nBit);
    /// Out of the state in which all segments are chosen.
    void toggleFromAll(quint32 nBit);
    void switchAllByCommand(VexaPropertyTreeItem *pCommand, bool bOn);
    void switchAllBySegments(bool bOn);
    /// `bAgain` even if the segments were walked before.
    bool readState(bool bAgain);
    void updateAllSelected();
    void takeKnownEnable();
    void leaveDarkSegment();
    void setMask(quint32 nMask);
    void takeRowName();
    void nameForReaders();

    VexaPropertyTreeItem
        *m_pItem; ///< the row; for refills only, as the editor may outlive it for a while
    LightingAccess m_light;
    bool m_bAllSelected =
        false; ///< the selector stands on "all", and there are no commands for all segments
    bool m_walked[2] = {}; ///< a walk without "all", and one with it, has been done
    quint32 m_nMask = 0;
    quint32 m_nHoverBit = 0;
    quint32 m_nKeyBit; ///< where the space bar acts
    std::optional<qint64>
        m_lastCommon; ///< the first shared setting as it was given to all segments
    QBasicTimer m_hoverTimer;
    bool m_bBusy = false;

    QMutex m_mutex; ///< guards what follows; nothing else is taken under it
    QVector<VexaPropertyTreeItem *> m_watched; ///< by number of the bit of Change; null for none
    QVector<VexaPropertyTreeItem *> m_commands;
    int m_nChanges = 0;
    int m_nUserWrites = 0; ///< those of the changes that the user wrote in another row
};
