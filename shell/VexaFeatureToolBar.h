#pragma once

#include "ControlKit/CustomWidget.h"

class CustomPushButton;
class QButtonGroup;
class QHBoxLayout;

/// The row of five buttons above a feature tree: refresh, expand or fold, import, export, file access. It reports
/// clicks by the button's number and follows the state of the camera. GUI thread.
class VexaFeatureToolBar : public CustomWidget
{
    Q_OBJECT
public:
    /// Numbers of the buttons, as SigToolBarBtnClicked carries them.
    enum Button {
        BUTTON_EXPAND = 0,
        BUTTON_IMPORT = 1,
        BUTTON_EXPORT = 2,
        BUTTON_FILE_ACCESS = 3,
        BUTTON_REFRESH = 4
    };

    /// Throws std::bad_alloc when a step of the construction fails.
    explicit VexaFeatureToolBar(QWidget *parent);
    ~VexaFeatureToolBar() override;

    /// The tree is expanded now: the button offers folding.
    void setExpanded();
    /// `state` 1 is a live camera; of another one every button is off. The rest goes by the state of the camera's task:
    /// while it grabs, import, export and file access are off. `busy` shuts import, export and file access.
    void UpdateToolBarBtn(int state, int cameraId, bool busy);

Q_SIGNALS:
    /// A click, by Button.
    void SigToolBarBtnClicked(int nIndex);

protected:
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private Q_SLOTS:
    void OnSigToolBarBtnClicked(int nIndex);

private:
    void createButtons();
    void layoutButtons();
    void applyLanguage();
    void applyExpandState();
    void applyRefreshState();
    CustomPushButton *button(int id) const;

    bool m_bRefreshAllowed = true; ///< by the camera's state
    bool m_bRefreshPaused = false; ///< for a second after a click
    bool m_bExpanded = false; ///< the button offers folding
    QButtonGroup *m_pButtonGroup = nullptr;
    CustomPushButton *m_pExpandButton = nullptr;
    CustomPushButton *m_pImportButton = nullptr;
    CustomPushButton *m_pExportButton = nullptr;
    CustomPushButton *m_pFileAccessButton = nullptr;
    CustomPushButton *m_pRefreshButton = nullptr;
    QHBoxLayout *m_pLayout = nullptr;
};
