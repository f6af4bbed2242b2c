#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>

class VexaFeatureTree;

/// One silent export, check or import of a tree, with an end whatever road it takes: a tree tells most ends by a signal, and
/// some not at all. GUI thread.
class FeatureFileCall : public QObject
{
    Q_OBJECT
public:
    enum class End {
        Done,
        Failed,
        Unsaid, ///< the tree has stopped, or not begun, without a signal: it has no device or no features
        Stuck, ///< no progress within the limit; the tree may still be at it
        TreeGone
    };
    Q_ENUM(End)

    /// `limit`: longest time without progress.
    FeatureFileCall(VexaFeatureTree &tree, std::chrono::milliseconds limit, QObject *parent);
    /// Adds a record to a bag.
    void exportTo(const QString &bag);
    /// Compares the text of a feature file with the device.
    void check(const QString &text);
    /// Checks the text of a feature file and writes it into the device; its questions run events.
    void import(const QString &text);

signals:
    /// Once, and never before the operation has returned.
    void ended(FeatureFileCall::End end);

private:
    using EndSignal = void (VexaFeatureTree::*)(bool);
    void begin(EndSignal endSignal);
    void look();
    void end(End end);

    QPointer<VexaFeatureTree> m_pTree;
    std::chrono::milliseconds m_limit;
    QDeadlineTimer m_deadline;
    QTimer m_timer;
    int m_nDone = -1; ///< progress when it was looked at last
    int m_nIdleLooks = 0;
    bool m_bEnded = false;
};
