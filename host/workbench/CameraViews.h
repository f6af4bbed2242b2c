#pragma once

#include <QWidget>

class CameraSession;
class CustomLabel;
class GuidedPages;
class QStackedLayout;
class QTabBar;

/// The two ways in which the window shows a camera: all its features, or the guided pages of its device. Without an open
/// camera it says what to do. GUI thread.
class CameraViews : public QWidget
{
    Q_OBJECT
public:
    /// `pFeatures`, which this takes over, shows all features of the current camera.
    explicit CameraViews(QWidget *pFeatures, QWidget *pParent = nullptr);

    /// The camera that is on show; null for none.
    void setCamera(const CameraSession *pCamera);

protected:
    void changeEvent(QEvent *event) override;

private:
    void retranslate();
    void showChosen();
    /// Where the return button above all features leads.
    void showPages();

    QTabBar *m_pTabs;
    QStackedLayout *m_pStack;
    GuidedPages *m_pPages;
    CustomLabel *m_pNotOpen;
    bool m_bOpen = false;
    long m_lCameraID = -1;
};
