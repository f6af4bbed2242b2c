#include "DeviceTaskModule/VexaFeatureObserverable.h"

VexaFeatureObserverable::~VexaFeatureObserverable() = default;
