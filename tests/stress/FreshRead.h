#pragma once

#include "tests/support/ModuleFixture.h"

#include <QStringList>

/// A tree compared with its device: each item's value, range, entries, access and visibility with what the operations
/// of the task answer now, worked out here from the description.
struct FreshRead
{
    static FreshRead compare(const ModuleFixture::Camera &camera);

    QStringList differences; ///< "Name: what: shown, read"
    int values = 0; ///< items whose value was compared
};
