#pragma once

#include "tests/support/ModuleFixture.h"

#include <QStringList>

/// A tree compared with a second one that is read anew from the same device: each item's value, range, entries, access
/// and visibility.
struct FreshRead
{
    static FreshRead compare(const ModuleFixture::Camera &camera);

    QStringList differences; ///< "Name: what: shown, read"
    int values = 0; ///< items whose value was compared
};
