#pragma once

#include "DeviceTaskModule/VexaFeatureObserverable.h"
#include "host/workbench/CodeTypeModel.h"
#include "host/workbench/PollingModel.h"

#include <QFutureWatcher>
#include <QObject>
#include <QPointer>
#include <QTimer>

class VexaFeatureTree;

/// The tables that a client lends the module for one opened code reader: the polling parameters and the code types. It
/// enters them, keeps them in step with the device and takes them back when it goes. GUI thread; the device is read on a
/// worker.
class ReaderTables : public QObject, public VexaFeatureObserverable
{
    Q_OBJECT
public:
    /// The tree has ended its first full update.
    explicit ReaderTables(VexaFeatureTree &tree, QObject *parent = nullptr);
    ~ReaderTables() override;

    /// Neither polling parameters nor features that count codes.
    bool isEmpty() const { return m_polling.isEmpty() && m_codeTypes.rowCount() == 0; }
    PollingModel &polling() { return m_polling; }
    CodeTypeModel &codeTypes() { return m_codeTypes; }
    void retranslate();
    /// What the device holds has changed behind the tables: all sets are unknown, the selected one is read.
    void readAgain();
    /// The reading that may be under way; it outlives the tables.
    QFuture<PollingReading> reading() const { return m_watcher.future(); }

    void notifyFeatureChanged(const QString &nodeName, bool fromUiJson) override;
    void notifyFeatureTreeReleased(long int cameraId) override;

private:
    void read();
    void takeReading();
    void takeLimits();

    QPointer<VexaFeatureTree> m_pTree;
    const long int m_lCameraID;
    PollingModel m_polling;
    CodeTypeModel m_codeTypes;
    QFutureWatcher<PollingReading> m_watcher;
    QTimer m_readTimer;
    bool m_bOutdated = false; ///< something changed while a reading was under way
};
