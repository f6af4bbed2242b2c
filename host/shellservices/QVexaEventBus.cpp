#include "ShellServicesModule/QVexaEventBus.h"

#include <QCoreApplication>

QVexaEventBus::QVexaEventBus()
{
    // Text connections across threads look these names up.
    qRegisterMetaType<QList<QString>>("QList<QString>");
    qRegisterMetaType<long>("long int");
}

QVexaEventBus *QVexaEventBus::Instance()
{
    static auto *const s_pInstance = [] {
        auto *pBus = new QVexaEventBus;
        if (QCoreApplication::instance()) {
            pBus->moveToThread(QCoreApplication::instance()->thread());
        }
        return pBus;
    }();
    return s_pInstance;
}
