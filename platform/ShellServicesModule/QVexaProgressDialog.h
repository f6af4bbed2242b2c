#pragma once

#include "ControlKit/CustomMainWindow.h"
#include "ShellServicesModule/ShellServicesModuleGlobal.h"

#include <memory>

/// Progress of a device file transfer. GUI thread; it refuses to be closed by the user before the end.
class SHELLSERVICESMODULE_API QVexaProgressDialog : public CustomMainWindow
{
    Q_OBJECT
public:
    explicit QVexaProgressDialog(bool isImport, QWidget *parent = nullptr);
    ~QVexaProgressDialog() override;
    /// Starts anew with empty numbers; the flag selects the title.
    void initInfo(bool isImport);
    /// Bytes in all and so far; a total of 0 and below shows a busy bar.
    void setTotalBytes(qint64 bytes);
    void setCurBytes(qint64 bytes);

protected:
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    class Private;
    std::unique_ptr<Private> d;
};
