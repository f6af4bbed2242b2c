#pragma once

#include "DeviceTaskModule/DeviceTaskModuleGlobal.h"

#include <QString>

#include <memory>

/// Translated node texts of one camera. Any thread; each answers the empty string when it has no translation.
class DEVICETASKMODULE_API VexaCameraTranslator
{
public:
    ~VexaCameraTranslator();

    /// Name of a node.
    QString getPropDisplayNameTrans(const QString &nodeName);
    /// Description of a node.
    QString getPropDescriptionTrans(const QString &nodeName);
    /// Name of an entry of an Enumeration.
    QString getPropEnumerationTrans(const QString &nodeName, const QString &entryName);

private:
    friend class CameraTaskFactory;
    class Private;
    explicit VexaCameraTranslator(std::unique_ptr<Private> d);
    Q_DISABLE_COPY(VexaCameraTranslator)
    std::unique_ptr<Private> d;
};

/// Registry of the translators. Any thread.
class DEVICETASKMODULE_API VexaCameraTranslatorManager
{
public:
    /// The singleton; never null.
    static VexaCameraTranslatorManager *getInstance();
    /// The translator of one camera, null when it has none. It lives as long as a task look-up of the same
    /// thread would (see QTaskManager).
    VexaCameraTranslator *getCameraTranslator(int cameraId);

private:
    VexaCameraTranslatorManager();
    ~VexaCameraTranslatorManager();
    Q_DISABLE_COPY(VexaCameraTranslatorManager)
};
