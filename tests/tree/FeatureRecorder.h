#pragma once

#include "DeviceTaskModule/VexaFeatureObserverable.h"
#include "tree/VexaFeatureTree.h"

#include <QPointer>

#include <functional>

/// What a tree tells one of its observers, from its making to its end.
class FeatureRecorder : public VexaFeatureObserverable
{
public:
    explicit FeatureRecorder(VexaFeatureTree &tree)
        : m_pTree(&tree)
    {
        tree.AddFeatureObserverable(this);
    }
    ~FeatureRecorder() override
    {
        if (m_pTree) {
            m_pTree->RemoveFeatureObserverable(this);
        }
    }
    void notifyFeatureChanged(const QString &name, bool) override
    {
        m_names.append(name);
        if (m_whenTold) {
            m_whenTold();
        }
    }
    void notifyFeatureTreeReleased(long int cameraId) override { m_released.append(cameraId); }

    QStringList m_names;
    QList<long int> m_released;
    std::function<void()> m_whenTold;

private:
    const QPointer<VexaFeatureTree> m_pTree;
};
