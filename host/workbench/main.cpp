#include "ShellServicesModule/QFunction.h"
#include "ShellServicesModule/QLocalCfg.h"
#include "UtilityKit/VexaInterface.h"
#include "host/controlkit/CustomStyle.h"
#include "host/devicetask/CameraHost.h"
#include "host/devicetask/RealDevices.h"
#include "host/shellservices/ShellHost.h"
#include "host/utilitykit/UtilityHost.h"
#include "host/workbench/CommandLine.h"
#include "host/workbench/DescriptionLint.h"
#include "host/workbench/DeviceCatalog.h"
#include "host/workbench/FeatureFileTools.h"
#include "host/workbench/HeadlessRunner.h"
#include "host/workbench/MessageHandler.h"
#include "host/workbench/TerminationSignals.h"
#include "host/workbench/WorkbenchWindow.h"

#include <QApplication>
#include <QTextCodec>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <thread>

namespace {

enum ExitCode { EXIT_DONE = 0, EXIT_FAILED = 1, EXIT_USAGE = 2 };

constexpr std::chrono::seconds SHUTDOWN_LIMIT{10};
/// Devices that have not answered a look by then are not there.
constexpr std::chrono::seconds DISCOVERY_LIMIT{5};

void print(FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

void complain(const QString &text)
{
    print(stderr, QStringLiteral("vexa-workbench: %1\n").arg(text));
}

/// Headless jobs never look for a display; without one the window is drawn off screen too.
void choosePlatform(bool headless)
{
    const bool hasDisplay =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (headless || (!hasDisplay && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
}

/// A device that hangs keeps its threads, and a file under way its copy, which the closing waits for. From here on the
/// program ends all the same, with this code.
int limitShutdown(int exitCode)
{
    std::thread([exitCode] {
        std::this_thread::sleep_for(SHUTDOWN_LIMIT);
        std::fputs("vexa-workbench: a device does not answer; it could not be closed\n", stderr);
        std::_Exit(exitCode);
    }).detach();
    return exitCode;
}

/// Enters what the command line names, else `defaults`; the ids in that order, empty with a reason in `error`.
QStringList fillCatalog(DeviceCatalog &catalog, const WorkbenchOptions &options,
                        const QStringList &defaults, QString *error)
{
    QStringList ids;
    for (const QString &device : options.namedDevices() > 0 ? options.devices : defaults) {
        ids += catalog.addBuiltIn(device, error);
    }
    for (const QString &address : options.gigeAddresses) {
        ids += catalog.addGige(address, error);
    }
    for (const QString &id : options.usbIds) {
        ids += catalog.addUsb(id, error);
    }
    for (const QString &description : options.descriptions) {
        ids += catalog.addDescription(description, options.memoryPattern, error);
    }
    return ids.contains(QString()) ? QStringList() : ids;
}

/// Prints the simulated devices, then those that answer.
int listDevices()
{
    auto look = std::async(std::launch::async, &RealDevices::discover);
    print(stdout, DeviceCatalog::listOf(DeviceCatalog::builtInSources()));
    if (look.wait_for(DISCOVERY_LIMIT) == std::future_status::ready) {
        print(stdout, DeviceCatalog::listOf(look.get()));
        return EXIT_DONE;
    }
    complain(QStringLiteral("the search for devices was given up after %1 s")
                 .arg(DISCOVERY_LIMIT.count()));
    // Whatever hangs in the search would keep the program from ending.
    std::_Exit(EXIT_DONE);
}

/// The two devices of a start without options.
QStringList defaultDevices()
{
    const QString area = QStringLiteral("area-camera");
    const QString reader = QStringLiteral("code-reader");
    return {area, SimulatedDevices::builtInIds().contains(reader) ? reader : area};
}

/// Built-in devices that were not asked for can be opened from the window.
void addFurtherDevices(DeviceCatalog &catalog)
{
    for (const QString &id : SimulatedDevices::builtInIds()) {
        QString error;
        if (!catalog.find(id)) {
            catalog.addBuiltIn(id, &error);
        }
    }
}

int runHeadless(WorkbenchWindow &window, const WorkbenchOptions &options, const QStringList &ids)
{
    QObject::connect(QFunction::Instance(), &QFunction::messageLogged, &window,
                     [](int level, const QString &camera, const QString &text) {
                         if (level != MESSAGE_LOG_INFO) {
                             complain(camera.isEmpty() ? text
                                                       : camera + QStringLiteral(": ") + text);
                         }
                     });
    // A box may be the only window that is ever shown.
    QApplication::setQuitOnLastWindowClosed(false);
    HeadlessRunner runner(window, options, ids);
    QObject::connect(&runner, &HeadlessRunner::finished, qApp, &QCoreApplication::exit,
                     Qt::QueuedConnection);
    QTimer::singleShot(0, &runner, &HeadlessRunner::start);
    return limitShutdown(QApplication::exec());
}

int runWindow(WorkbenchWindow &window, const QStringList &ids, int descriptionsFrom)
{
    // A description that the command line names has to be a good one.
    QObject::connect(&window, &WorkbenchWindow::deviceOpenFailed, &window,
                     [ids, descriptionsFrom](const QString &id, const QString &error) {
                         if (ids.indexOf(id) >= descriptionsFrom) {
                             complain(id + QStringLiteral(": ") + error);
                             QCoreApplication::exit(EXIT_FAILED);
                         }
                     });
    window.show();
    for (const QString &id : ids) {
        window.openDevice(id);
    }
    return limitShutdown(QApplication::exec());
}

int run(const WorkbenchOptions &options)
{
    const bool headless = options.isHeadless();
    if (headless) {
        ShellHost::useTransientSettings();
        UtilityHost::useTransientSettings();
    }
    if (options.userLevel >= 0) {
        QLocalCfg::Instance()->SetUserLevel(options.userLevel);
    }

    DeviceCatalog catalog;
    QString error;
    const int failed =
        options.isComparison() ? int(FeatureFileTools::COMPARE_TROUBLE) : EXIT_FAILED;
    const QStringList ids = fillCatalog(
        catalog, options, headless ? defaultDevices().mid(0, 1) : defaultDevices(), &error);
    if (ids.isEmpty()) {
        complain(error);
        return failed;
    }
    if (!headless) {
        addFurtherDevices(catalog);
    }

    CameraHost host;
    WorkbenchWindow window(host, catalog);
    window.setLanguage(options.language.isEmpty() ? VexaInterface::language(false)
                                                  : options.language);
    const TerminationSignals signalled;
    QObject::connect(&signalled, &TerminationSignals::requested, qApp,
                     [headless, failed] { QCoreApplication::exit(headless ? failed : EXIT_DONE); });
    return headless ? runHeadless(window, options, ids)
                    : runWindow(window, ids, ids.size() - options.descriptions.size());
}

} // namespace

int main(int argc, char *argv[])
{
    // File names and arguments are UTF-8, whatever the locale says.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QCoreApplication::setApplicationName(QStringLiteral("vexa-workbench"));
    QCoreApplication::setApplicationVersion(QStringLiteral(WORKBENCH_VERSION));

    QStringList arguments;
    for (int index = 0; index < argc; ++index) {
        arguments += QString::fromLocal8Bit(argv[index]);
    }
    CommandLine commandLine;
    if (!commandLine.parse(arguments)) {
        complain(commandLine.errorText() + QStringLiteral("\nTry 'vexa-workbench --help'."));
        return EXIT_USAGE;
    }
    const WorkbenchOptions &options = commandLine.options();
    if (options.version) {
        print(stdout, QStringLiteral("vexa-workbench " WORKBENCH_VERSION "\n"));
        return EXIT_DONE;
    }
    if (options.help) {
        const QCoreApplication application(argc, argv);
        print(stdout, commandLine.helpText());
        return EXIT_DONE;
    }
    if (options.list) {
        return listDevices();
    }
    if (!options.lintFile.isEmpty()) {
        return lintDescription(options.lintFile);
    }
    if (!options.secondFile.isEmpty()) {
        return FeatureFileTools::compareFiles(options.featureFileJobs.first().file,
                                              options.secondFile);
    }
    if (!options.bagFile.isEmpty()) {
        return FeatureFileTools::splitBag(options.bagFile, options.bagFolder);
    }

    choosePlatform(options.isHeadless());
    MessageHandler::install(VexaInterface::programDataPath() + QStringLiteral("/log"));
    // Off screen there is no monitor whose scale could be followed: a picture has whole logical pixels.
    if (!options.isHeadless()) {
        QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
        QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
            Qt::HighDpiScaleFactorRoundingPolicy::Round);
    }
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QApplication application(argc, argv);
    CustomStyle::install(application);
    const int exitCode = run(options);
    MessageHandler::uninstall();
    return exitCode;
}
