#include "editors/CLightingSelectorInterWidget.h"

#include "editors/EditorHost.h"
#include "model/CTreeItemValue.h"
#include "model/ItemLocks.h"
#include "tree/VexaFeatureTree.h"

#include <QDebug>
#include <QPointer>
#include <QThread>

namespace {

constexpr int USER_WRITE = 3; // kind of notification after an edit in a view
// The selector leaves a segment that goes dark for the lowest of these that shines; three segments have none.
constexpr quint32 SEGMENTS_TO_MOVE_TO = 1 | 2 | 4 | 8 | 16 | 32 | 64 | 128 | 256 | 512;

qint64 numberOf(VexaPropertyTreeItem *pItem)
{
    const ItemLock lock(pItem);
    return pItem->value() ? pItem->value()->value().toLongLong() : 0;
}

} // namespace

CLightingSelectorInterWidget::CLightingSelectorInterWidget(VexaPropertyTreeItem *item,
                                                           QWidget *parent)
    : CustomWidget(parent)
    , m_pItem(item)
    , m_light(item)
    , m_nKeyBit(LightingLayout::of(m_light.type()).firstBit())
{
    setFixedSize(LightingLayout::of(m_light.type()).size());
    setFocusPolicy(Qt::StrongFocus);
    watchItems();
    updateAllSelected();
    readState(false);
    takeRowName();
    nameForReaders();
}

CLightingSelectorInterWidget::~CLightingSelectorInterWidget()
{
    unwatchItems();
}

void CLightingSelectorInterWidget::refill()
{
    const LightingAccess light(m_pItem);
    takeRowName();
    if (m_bBusy || light == m_light) {
        nameForReaders();
        update();
        return;
    }
    unwatchItems();
    if (light.type() != m_light.type()) {
        m_nKeyBit = LightingLayout::of(light.type()).firstBit();
        setFixedSize(LightingLayout::of(light.type()).size());
    }
    if (light.selectorItem() != m_light.selectorItem() || light.entries() != m_light.entries()) {
        m_walked[0] = m_walked[1] = false;
    }
    m_light = light;
    watchItems();
    updateAllSelected();
    readState(false);
    nameForReaders();
    emit sigStateChanged();
    update();
}

void CLightingSelectorInterWidget::watchItems()
{
    QVector<VexaPropertyTreeItem *> watched{m_light.enableItem(), m_light.selectorItem()};
    for (int nSetting = 0; nSetting < LightingAccess::SETTING_COUNT; ++nSetting) {
        watched.append(m_light.settingItem(nSetting));
    }
    watched.append(m_light.bitmapItem());
    const QVector<VexaPropertyTreeItem *> commands{m_light.allOffItem(), m_light.allOnItem()};
    {
        const QMutexLocker locker(&m_mutex);
        m_watched = watched;
        m_commands = commands;
    }
    for (VexaPropertyTreeItem *const pItem : watched + commands) {
        if (pItem) {
            pItem->registerView(this);
        }
    }
}

void CLightingSelectorInterWidget::unwatchItems()
{
    const QVector<VexaPropertyTreeItem *> items = m_watched + m_commands;
    for (VexaPropertyTreeItem *const pItem : items) {
        if (pItem) {
            VexaPropertyTreeItem::removeViewFrom(pItem, this);
        }
    }
}

void CLightingSelectorInterWidget::itemVisibleChanged(long, VexaPropertyTreeItem *item, bool)
{
    noteChange(item, false);
}

void CLightingSelectorInterWidget::itemReadOnlyChanged(long, VexaPropertyTreeItem *item, bool)
{
    noteChange(item, false);
}

void CLightingSelectorInterWidget::itemDataChanged(long, VexaPropertyTreeItem *item, int nType,
                                                   bool, bool)
{
    noteChange(item, nType == USER_WRITE);
}

void CLightingSelectorInterWidget::noteChange(VexaPropertyTreeItem *pItem, bool bUserWrote)
{
    if (QThread::currentThread() == thread() && m_bBusy) {
        return; // the end of the own writes reads what they did
    }
    const QMutexLocker locker(&m_mutex);
    const int nIndex = m_watched.indexOf(pItem);
    const int nChange = nIndex < 0 ? int(CHANGE_OTHER) : 1 << nIndex;
    const bool bPosted = m_nChanges != 0;
    m_nChanges |= nChange;
    m_nUserWrites |= bUserWrote ? nChange : 0;
    if (!bPosted) {
        QMetaObject::invokeMethod(this, &CLightingSelectorInterWidget::takeChanges,
                                  Qt::QueuedConnection);
    }
}

void CLightingSelectorInterWidget::takeChanges()
{
    if (m_bBusy) {
        return; // comes again at the end of the own writes
    }
    int nChanges = 0;
    int nUserWrites = 0;
    {
        const QMutexLocker locker(&m_mutex);
        std::swap(nChanges, m_nChanges);
        std::swap(nUserWrites, m_nUserWrites);
    }
    if (!m_light.isLive()) {
        return;
    }
    if (nChanges & CHANGE_ENABLE) {
        takeEnableChange();
    }
    if (nChanges & CHANGE_SELECTOR) {
        updateAllSelected();
    }
    if (nChanges & (CHANGE_SELECTOR | CHANGE_BITMAP)) {
        readState(false);
    }
    for (int nSetting = 0; nSetting < LightingAccess::SETTING_COUNT; ++nSetting) {
        const int nChange = CHANGE_SETTING << nSetting;
        if (nChanges & nChange) {
            takeSettingChange(nSetting, (nUserWrites & nChange) != 0);
        }
    }
    nameForReaders();
    emit sigStateChanged();
    update();
}

void CLightingSelectorInterWidget::takeEnableChange()
{
    const quint32 nBefore = m_nMask;
    takeKnownEnable();
    if (m_nMask == nBefore || m_light.knownEnable() || m_bAllSelected) {
        return;
    }
    // The tree may know the switch of one segment and the selector of the one before; the device knows both.
    qint64 nEntry = -1;
    bool bOn = true;
    if (m_light.readEntry(nEntry) && nEntry == m_light.knownEntry() && m_light.readEnable(bOn)
        && !bOn) {
        runOwnWrites([this](const LightingAccess &) { leaveDarkSegment(); });
    }
}

void CLightingSelectorInterWidget::takeSettingChange(int nSetting, bool bUserWrote)
{
    const qint64 nValue = numberOf(m_light.settingItem(nSetting));
    if (nSetting == 0 && m_lastCommon == nValue) {
        return;
    }
    if (!bUserWrote) {
        if (nSetting == 0) {
            m_lastCommon.reset(); // this segment has another value now
        }
        return;
    }
    if (nSetting == 0) {
        m_lastCommon = nValue;
    }
    runOwnWrites([&](const LightingAccess &light) {
        light.spreadSetting(nSetting, nValue, nSetting == 0 ? light.knownEntry() : -1);
    });
}

bool CLightingSelectorInterWidget::runOwnWrites(
    const std::function<void(const LightingAccess &)> &writes)
{
    if (m_bBusy) {
        return true;
    }
    const LightingAccess light = m_light;
    const QPointer<CLightingSelectorInterWidget> guard(this);
    m_bBusy = true;
    writes(light);
    if (!guard) {
        return false;
    }
    m_bBusy = false;
    bool bWaiting = false;
    {
        const QMutexLocker locker(&m_mutex);
        bWaiting = m_nChanges != 0;
    }
    if (bWaiting) {
        QMetaObject::invokeMethod(this, &CLightingSelectorInterWidget::takeChanges,
                                  Qt::QueuedConnection);
    }
    nameForReaders();
    emit sigStateChanged();
    update();
    return true;
}

void CLightingSelectorInterWidget::toggle(quint32 nBit)
{
    if (m_bBusy || !m_light.isLive()) {
        return;
    }
    if (m_bAllSelected) {
        toggleFromAll(nBit);
    } else {
        toggleOne(nBit);
    }
    EditorHost::markCameraModified();
}

void CLightingSelectorInterWidget::toggleOne(quint32 nBit)
{
    const bool bOn = !(m_nMask & nBit);
    qInfo() << "CurrentValue " << m_light.selectorName() << bOn << nBit;
    const auto it = m_light.entries().constFind(nBit);
    if (it == m_light.entries().constEnd()) {
        return;
    }
    const qint64 nEntry = *it;
    runOwnWrites([=](const LightingAccess &light) {
        if (light.select(nEntry)) {
            light.switchSelected(bOn);
        }
        light.refreshItems();
        light.announce();
        updateAllSelected();
        takeKnownEnable();
        if (light.bitmapItem()) {
            readState(false);
        }
        if (!bOn && !(m_nMask & nBit) && light.knownEntry() == nEntry) {
            leaveDarkSegment();
        }
    });
}

void CLightingSelectorInterWidget::toggleFromAll(quint32 nBit)
{
    const bool bAllOn = (m_nMask & LIGHT_ALL) != 0;
    const quint32 nMask = m_nMask;
    const QPointer<CLightingSelectorInterWidget> guard(this);
    runOwnWrites([=](const LightingAccess &light) {
        const qint64 nStart = light.knownEntry();
        bool bWritten = false;
        bool bDone = true;
        const QMap<quint32, qint64> entries = light.entries();
        for (auto it = entries.cbegin(); bDone && guard && it != entries.cend(); ++it) {
            const bool bIsOn = nMask & it.key();
            const bool bClicked = it.key() == nBit;
            if (bAllOn ? bClicked == bIsOn : bClicked != bIsOn) {
                bDone = light.writeSegment(it.key(), bAllOn ? !bClicked : bClicked);
                bWritten = true;
            }
        }
        if (!guard || !light.isLive()) {
            return;
        }
        const quint32 nFirst = LightingLayout::of(light.type()).firstBit();
        if (!bWritten && entries.contains(nFirst)) {
            light.tree()->setFeatureValue(light.selectorItem(), int(entries.value(nFirst)), true,
                                          false);
        } else if (!bDone) {
            light.select(nStart);
        }
        if (guard && light.isLive()) {
            light.refreshItems();
            light.announce();
            updateAllSelected();
            readState(true);
        }
    });
}

void CLightingSelectorInterWidget::switchAll(bool on)
{
    if (m_bBusy || !m_light.isLive()) {
        emit sigStateChanged(); // what was clicked goes back to the truth
        return;
    }
    VexaPropertyTreeItem *const pCommand = on ? m_light.allOnItem() : m_light.allOffItem();
    if (pCommand) {
        switchAllByCommand(pCommand, on);
    } else {
        switchAllBySegments(on);
    }
    EditorHost::markCameraModified();
}

void CLightingSelectorInterWidget::switchAllByCommand(VexaPropertyTreeItem *pCommand, bool bOn)
{
    const QPointer<CLightingSelectorInterWidget> guard(this);
    runOwnWrites([=](const LightingAccess &light) {
        const bool bRan = light.tree()->setFeatureValue(pCommand, true, true, false);
        if (!guard || !light.isLive()) {
            return;
        }
        qInfo() << "all segments" << bOn << bRan;
        if (!readState(true) && bRan && light.type() != LightingLayout::TYPE_THREE) {
            setMask(0);
        }
        light.announce();
    });
}

void CLightingSelectorInterWidget::switchAllBySegments(bool bOn)
{
    const QPointer<CLightingSelectorInterWidget> guard(this);
    runOwnWrites([=](const LightingAccess &light) {
        const qint64 nStart = light.knownEntry();
        const QList<quint32> bits = light.entries().contains(LIGHT_ALL) ? QList<quint32>{LIGHT_ALL}
                                                                        : light.entries().keys();
        for (const quint32 nBit : bits) {
            if (!light.writeSegment(nBit, bOn) || !guard) {
                break;
            }
        }
        if (!guard || !light.isLive()) {
            return;
        }
        light.select(nStart);
        light.refreshItems();
        light.announce();
        updateAllSelected();
        readState(true);
    });
}

bool CLightingSelectorInterWidget::readState(bool bAgain)
{
    if (!m_light.isLive()) {
        return false;
    }
    quint32 nMask = 0;
    if (m_light.bitmapItem()) {
        if (!m_light.readBitmap(nMask)) {
            return false;
        }
        setMask(nMask);
        return true;
    }
    bool &bWalked = m_walked[int(m_bAllSelected)];
    if (bWalked && !bAgain) {
        return true;
    }
    if (!bAgain && m_light.selectorItem()->readOnly()) {
        return false; // it becomes writable with a notification
    }
    const bool bWasBusy = m_bBusy;
    m_bBusy = true; // what the tree tells of the walk is no news
    bWalked = m_light.walkSegments(nMask, m_bAllSelected);
    m_bBusy = bWasBusy;
    if (bWalked) {
        setMask(nMask);
    }
    return bWalked;
}

void CLightingSelectorInterWidget::updateAllSelected()
{
    const auto it = m_light.entries().constFind(LIGHT_ALL);
    m_bAllSelected = m_light.isLive() && m_light.type() != LightingLayout::TYPE_THREE
        && !m_light.allOffItem() && it != m_light.entries().constEnd()
        && m_light.knownEntry() == *it;
}

void CLightingSelectorInterWidget::takeKnownEnable()
{
    const quint32 nBit = m_light.bitOf(m_light.knownEntry());
    const bool bOn = m_light.knownEnable();
    const quint32 nWithAll =
        nBit == LIGHT_ALL && bOn ? LightingLayout::of(m_light.type()).allBits() : 0;
    setMask(bOn ? m_nMask | nBit | nWithAll : m_nMask & ~nBit);
}

void CLightingSelectorInterWidget::leaveDarkSegment()
{
    const quint32 nShining = m_nMask & SEGMENTS_TO_MOVE_TO;
    const quint32 nLowest = nShining & (~nShining + 1);
    const auto it = m_light.entries().constFind(nLowest);
    if (m_bAllSelected || nLowest == 0 || it == m_light.entries().constEnd()) {
        return;
    }
    if (m_light.select(*it)) {
        m_light.setKnownEntry(*it);
        m_light
            .refreshItems(); // or the switch of the dark one would be taken for that of the new one
    }
    m_light.announce();
}

void CLightingSelectorInterWidget::setMask(quint32 nMask)
{
    const LightingLayout &layout = LightingLayout::of(m_light.type());
    if (layout.type() != LightingLayout::TYPE_FOUR) {
        const bool bAll = (nMask & layout.allBits()) == layout.allBits();
        nMask = bAll ? nMask | LIGHT_ALL : nMask & ~LIGHT_ALL;
    }
    m_nMask = nMask;
}

bool CLightingSelectorInterWidget::isAllOn() const
{
    const quint32 nAll = LightingLayout::of(m_light.type()).allBits();
    return m_bAllSelected ? (m_nMask & LIGHT_ALL) != 0 : (m_nMask & nAll) == nAll;
}
