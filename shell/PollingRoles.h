#pragma once

/// Roles of the items in the host's table of polling parameters, which the module writes.
enum PollingRole {
    POLLING_ROLE_VALUE = 257, ///< the value as a string
    POLLING_ROLE_MAP =
        265, ///< QMap<int, int> from selector value to value; on the rows of the two selectors only
    POLLING_ROLE_CHANGED = 266 ///< true once "PollingFocusPos" was written
};
