#pragma once

#include "host/simulator/sfnc/StandardBehaviour.h"

/// The firmware of the line-scan camera: line rates follow exposure and limit, the encoder turns while it grabs.
class LineCameraBehaviour : public StandardBehaviour
{
public:
    explicit LineCameraBehaviour(const FeatureTable &table);

protected:
    double reachableRate(const RegisterMemory &memory) const override;
    void stopAcquisition(RegisterMemory &memory) override;

private:
    double lineRate(const RegisterMemory &memory) const;
    void turnEncoder(RegisterMemory &memory);

    qint64 m_nTurned = 0; ///< steps of the encoder that belong to the running acquisition
};
