#pragma once

#include "ShellServicesModule/VexaListenTools.h"

#include <QObject>
#include <QString>

/// Hears what the module tells its client over the event bus and the listener registry: each leaves a line in the
/// message log, in the language of the program, and what the window has to act on comes as a signal. The module may
/// tell it on any thread; lines and signals come on the GUI thread.
class HostEvents : public QObject, public IVexaListen
{
    Q_OBJECT
public:
    explicit HostEvents(QObject *parent = nullptr);
    ~HostEvents() override;

    void notify(int event, void *data) override;

signals:
    /// Parameters were loaded into the camera that was on show then; called once the module's own call has ended.
    void parametersLoaded(long int cameraId);
    /// Names, states or marks of cameras changed.
    void camerasChanged();

private:
    void connectStations();
    void connectParameters();
    void connectList();
};
