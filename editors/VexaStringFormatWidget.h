#pragma once

#include "ControlKit/CustomWidget.h"
#include "model/IVexaFeatureNotify.h"

#include <QStringList>

class CTreeFormatStringTextItemValue;
class CustomLabel;
class CustomMenu;
class CustomPushButton;
class QAction;
class QCameraTask;
class QKeyEvent;
class QTextEdit;
class VexaPropertyTreeItem;

/// Editor of a format text (a StringReg of fixed text and tags such as "<codecontent>") and of its relatives: trigger
/// strings, directories and names of pictures. It writes straight to the device when editing ends, past the model.
/// GUI thread, but for itemReadOnlyChanged.
class VexaStringFormatWidget : public CustomWidget, public IVexaFeatureNotify
{
    Q_OBJECT
public:
    /// The row's value is not owned; with the items that it names it outlives the widget's use of it.
    VexaStringFormatWidget(CTreeFormatStringTextItemValue *pValue, QWidget *pParent);
    ~VexaStringFormatWidget() override;

    /// Refills the editor. Writes nothing, and leaves alone a text that the user is typing.
    void setValue(CTreeFormatStringTextItemValue *pValue);
    /// Whether the row itself takes edits; the format node's own state comes on top.
    void setRowReadOnly(bool bReadOnly);
    /// Gives up what the user typed.
    void rollback();

    /// Any thread.
    void itemReadOnlyChanged(long lCameraID, VexaPropertyTreeItem *pItem, bool bReadOnly) override;

Q_SIGNALS:
    /// The format node became read-only or writable.
    void SigReadOnlyChanged(long lCameraId, bool bReadOnly);
    /// "Edit" was clicked: the dialog is the host's. `pSourceData`, the Enumeration of the tags, is null for a trigger
    /// string.
    void SigFormatEditRequested(VexaPropertyTreeItem *pFormat, VexaPropertyTreeItem *pSourceData);

public Q_SLOTS:
    /// Puts a tag behind the text and writes it; one that does not fit is passed over.
    void OnAction(QAction *pAction);
    void OnTextChanged();
    void OnTextEditingFinished();
    void OnSigReadOnlyChanged(long lCameraId, bool bReadOnly);
    void OnOpenAsciiWidget();
    /// Takes the first string over from a table of characters; what does not fit is passed over.
    void OnAsciiTableItemClicked(QStringList &strAscii);
    void OpenFormatOutputWidget();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void build();
    void buildButton();
    void retranslate();
    void translateMenu();
    void applyLook(bool bReadOnly);
    void rebuildTagMenu();
    void openTagMenu();
    void watch(VexaPropertyTreeItem *pFormatItem);
    /// Null when the camera has gone.
    QCameraTask *task() const;
    QString formatNode() const;
    /// What the box makes of a text: its line ends, cut to the limit.
    QString boxForm(const QString &strText) const;
    /// Sets the text of the box, which counts as no edit.
    void putText(const QString &strText);
    void showStoredText();
    /// The user has begun a text and has not ended the edit.
    bool hasUserText() const;
    bool takesKey(const QKeyEvent *pEvent) const;
    /// What the device says now: its trigger is a row of bytes, not a text. Waits for the device.
    bool isTriggerOfBytes(QCameraTask &task) const;
    /// False when the text cannot be, which the user is told.
    bool acceptText(const QString &strFormatNode, const QString &strText);
    void writeText(const QString &strFormatNode, const QString &strText);
    void showFailure(const QString &strFormatNode, const QString &strText, int nError);

    long int m_lCameraID;
    int m_nLimit; ///< in characters
    QString m_strText; ///< the last text known to be on the device
    QString m_strCustomNode;
    CustomLabel *m_pTitle = nullptr;
    CustomPushButton *m_pButton = nullptr;
    QTextEdit *m_pTextEdit = nullptr;
    CustomLabel *m_pCounter = nullptr;
    CustomMenu *m_pTagMenu = nullptr; ///< null in rows without one
    CTreeFormatStringTextItemValue *m_pValue;
    QString m_strWorkingText; ///< what a table of characters adds to

    QString m_strAcceptedText; ///< what the box last took, typed or refilled
    QString m_strFailedText; ///< what the device refused; not tried again as it stands
    QStringList m_tagNames; ///< the entries that the menu was made of
    VexaPropertyTreeItem *m_pWatchedItem = nullptr; ///< registered on; may have gone
    bool m_bEditing = false; ///< from the focus's coming until it leaves for another widget
    bool m_bWriting = false;
    bool m_bRowReadOnly = false;
};
