#pragma once

#include "ControlKit/ControlKitGlobal.h"

#include <QString>

/// Busy dialogs by key: at most one a key. They do not block and take no input. GUI thread.
class CONTROLKIT_API CustomLoadingDialog
{
public:
    /// Shows the dialog of this key, or gives it another text.
    static void showLoading(const QString &text, int key);
    /// Hides and deletes it; a key without a dialog is passed over.
    static void hideLoading(int key);
    /// Whether the dialog of this key is on show.
    static bool isLoading(int key);

private:
    CustomLoadingDialog() = delete;
};
