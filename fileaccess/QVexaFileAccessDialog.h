#pragma once

#include "ControlKit/CustomMainWindow.h"
#include "ShellServicesModule/VexaListenTools.h"

#include <memory>

class CTreeEnumationItemValue;
class CustomComboBox;
class CustomLabel;
class QCameraTask;
class QTimer;
class QVexaFileAccessThread;
class QVexaProgressDialog;
class VexaPropertyTreeItem;

/// Moves the files that a device lists under FileSelector (GenICam file access) to the host and back, for one camera.
/// Run it with exec and delete it afterwards; when the camera goes it closes by itself. GUI thread.
class QVexaFileAccessDialog : public CustomMainWindow, public IVexaListen
{
    Q_OBJECT
public:
    explicit QVexaFileAccessDialog(long int cameraId, QWidget *parent = nullptr);
    ~QVexaFileAccessDialog() override;

    /// What the user has not been told because the camera went meanwhile; for the one who ran the dialog to show.
    QString lastWords() const;
    static QString promptTitle();

    void notify(int event, void *data) override;

Q_SIGNALS:
    /// For hosts that know it; the restart goes by VEXA_EVENT_RESET_DEVICE.
    void SigRestartDevice();

public Q_SLOTS:
    void onEndThread(int nThreadType, bool bResult, QString strError);
    void updateProgress();
    /// 0 imports, any other exports.
    void onButtonCliked(int nIndex);
    void onComboboxChanged();

protected:
    void changeEvent(QEvent *event) override;

private:
    void makeContent();
    void setTexts();
    void fillCombo();
    CTreeEnumationItemValue *selectorValue() const;
    QString entryName() const;
    QCameraTask *cameraTask() const;
    bool isTransferring() const;
    void importFile();
    void exportFile();
    void startTransfer(int direction, const QString &path, const QString &fileName);
    void letGoOfWorker();
    void cameraGone();
    void tellFailure(const char *key, const QString &error);
    void askForRestart();

    long int m_lCameraID;
    QTimer *m_pProgressTimer = nullptr;
    CustomComboBox *m_pSelectorCombo = nullptr;
    QVexaFileAccessThread *m_pWorker; ///< null once the camera has gone
    QString m_strLastPath;
    QVexaProgressDialog *m_pProgressDialog = nullptr;
    std::unique_ptr<VexaPropertyTreeItem> m_pSelectorItem; ///< stands in no tree
    CustomLabel *m_pLabel = nullptr;
    QString m_strUnread; ///< message of a failure that the user has not put away
    int m_nDirection = 0; ///< of the transfer that was started last
};
