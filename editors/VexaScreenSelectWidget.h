#pragma once

#include "ControlKit/CustomWidget.h"

class CTreeScreenSelectItemValue;

/// Editor of the home page of a small screen: its picture between two arrows that step through the pages in a ring.
/// GUI thread.
class VexaScreenSelectWidget : public CustomWidget
{
    Q_OBJECT
public:
    /// `value` is that of the row and outlives the editor.
    VexaScreenSelectWidget(CTreeScreenSelectItemValue *value, QWidget *parent);

    /// 1 to 3; nothing is shown for any other. Writes nothing.
    void setPage(int page);
    int page() const { return m_nPage; }
    /// As high as a picture: what asks for nothing gets the height of one line.
    QSize sizeHint() const override;

public Q_SLOTS:
    /// Does nothing: the arrows are drawn and answer to the mouse events of the editor.
    void OnPreOrNextBtnClicked();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QString picturePath() const;
    QSize pictureSize() const;
    void step(int direction);
    void nameForReaders();

    CTreeScreenSelectItemValue *m_pValue;
    long int m_lCameraID;
    int m_nPage;
    int m_nScreenLanguage = 0; ///< of the device's screen: 0 Chinese
    bool m_bOverBack = false;
    bool m_bOverForward = false;
};
