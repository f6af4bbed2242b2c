#pragma once

#include "ShellServicesModule/VexaListenTools.h"
#include "tests/support/WriteTraces.h"

#include <QObject>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <memory>
#include <vector>

class QSignalSpy;

using Values = QVector<QPair<QString, QVariant>>; ///< feature and value; a command takes any value
Q_DECLARE_METATYPE(Values)

/// A tree over a simulated device whose values are written, with all that the client hears meanwhile as one list of
/// lines: "box title|text", "prompt level title|text", "message text", "bus signal arguments", "listen event data" and
/// "info line", "critical line" of the log. "#" stands for the camera id, "@" for the device's remark.
class WriteFixture : public QObject, public IVexaListen
{
    Q_OBJECT
public:
    explicit WriteFixture(const QString &deviceId = QStringLiteral("code-reader"));
    ~WriteFixture() override;

    VexaFeatureTree &tree() { return *m_camera.tree; }
    QCameraTask &task() { return *taskOf(m_camera); }
    SimulatorControl &control() { return *m_camera.device.control; }
    ModuleFixture &module() { return m_module; }
    const ModuleFixture::Camera &camera() const { return m_camera; }
    VexaPropertyTreeItem *item(const QString &name);
    /// Writes with the type of the item.
    bool write(const QString &name, const QVariant &value);
    /// The same through the model of the view, as an editor does.
    bool edit(const QString &name, const QVariant &value);
    /// Past the tree. "run" as a value runs a command.
    bool setOnDevice(const QString &name, const QVariant &value);
    QVariant onDevice(const QString &name);
    /// What the row holds.
    QVariant inRow(const QString &name);
    /// Writes in the device's access log.
    int accessesOfWrites() { return writesOf(m_camera).size(); }
    /// What was heard since the last call, kind after kind.
    QStringList takeHeard();
    void notify(int event, void *data) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

    bool m_bAnswersYes = true; ///< what is clicked in boxes
    std::function<void()> m_whileBoxIsUp; ///< ahead of the answer

private:
    QString readable(const QString &text) const;

    QStringList m_heard;
    std::vector<std::unique_ptr<QSignalSpy>> m_busSpies;
    ModuleFixture m_module;
    ModuleFixture::Camera m_camera;
};

/// One fixture for all rows and functions that leave each other alone; two of them cannot stand at once.
template<typename Fixture>
class SharedFixture
{
public:
    /// With nothing heard and an empty access log.
    Fixture &get()
    {
        if (!m_pFixture) {
            m_pFixture = std::make_unique<Fixture>();
        }
        m_pFixture->takeHeard();
        m_pFixture->control().clearAccessLog();
        return *m_pFixture;
    }
    /// One that nobody else has touched.
    Fixture &fresh()
    {
        m_pFixture.reset();
        return get();
    }
    void reset() { m_pFixture.reset(); }

private:
    std::unique_ptr<Fixture> m_pFixture;
};
