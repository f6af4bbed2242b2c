#include "host/workbench/CommandLine.h"

namespace {

struct Option
{
    const char *name;
    const char *valueName; ///< null for a switch
    const char *description;
    bool repeatable;
};

const Option DEVICE{"device", "ID", "Open this device; may be given several times.", true};
const Option DESCRIPTION{"description", "FILE",
                         "Open a simulated device with this GenICam XML description.", true};
const Option MEMORY_PATTERN{"memory-pattern", "zero|ugly",
                            "What the registers of such a device hold at first.", false};
const Option GIGE{"gige", "ADDRESS",
                  "Open the GigE Vision device at this IPv4 address; may be given several times.",
                  true};
const Option USB{"usb", "ID",
                 "Open the USB3 Vision device with this id or serial number; may be given several "
                 "times.",
                 true};
const Option LIST{"list", nullptr,
                  "Print the devices that can be opened, those on the network and the USB too.",
                  false};
const Option LINT{"lint", "FILE", "Check this GenICam XML description and print what is wrong.",
                  false};
const Option LANGUAGE{"language", "ENG|CH", "Language of the program and of the feature texts.",
                      false};
const Option USER_LEVEL{"user-level", "0|1|2", "Features to show: 0 guru, 1 expert, 2 beginner.",
                        false};
const Option DUMP{"dump", "FILE|-",
                  "Write all features as JSON to the file or to the standard output.", false};
const Option READ{"read", "NAME", "Print the value of this feature.", false};
const Option WRITE{"write", "NAME=VALUE",
                   "Write this value as the feature tree does; may be given several times.", true};
const Option RUN{"run", "COMMAND",
                 "Run this command as the feature tree does; may be given several times.", true};
const Option FILES{"files", nullptr, "Print the files of the device: name and display name.",
                   false};
const Option GET_FILE{"get-file", "NAME FILE",
                      "Copy this file of the device to the file; may be given several times.",
                      true};
const Option PUT_FILE{"put-file", "NAME FILE",
                      "Copy the file to this file of the device; may be given several times.",
                      true};
const Option YES{"yes", nullptr, "Answer the questions of writes and commands with yes.", false};
const Option SCREENSHOT{"screenshot", "FILE.png", "Save a picture of the window.", false};
const Option HELP{"help", nullptr, "Print this help.", false};
const Option VERSION{"version", nullptr, "Print the version.", false};

const Option *const ALL_OPTIONS[] = {
    &DEVICE,     &DESCRIPTION, &MEMORY_PATTERN, &GIGE,   &USB, &LIST,  &LINT,     &LANGUAGE,
    &USER_LEVEL, &DUMP,        &READ,           &WRITE,  &RUN, &FILES, &GET_FILE, &PUT_FILE,
    &YES,        &SCREENSHOT,  &HELP,           &VERSION};

QString nameOf(const Option &option)
{
    return QString::fromLatin1(option.name);
}

/// Stands between the two values of one option, which the parser takes for one; no argument can hold it.
const QChar VALUE_SEPARATOR(0);

/// "--get-file NAME FILE" as one argument.
QStringList withJoinedValues(const QStringList &arguments)
{
    QStringList joined;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        const bool takesTwo = argument == QLatin1String("--") + nameOf(GET_FILE)
            || argument == QLatin1String("--") + nameOf(PUT_FILE);
        if (takesTwo && i + 2 < arguments.size()) {
            joined.append(argument + QLatin1Char('=') + arguments.at(i + 1) + VALUE_SEPARATOR
                          + arguments.at(i + 2));
            i += 2;
        } else {
            joined.append(argument);
        }
    }
    return joined;
}

} // namespace

CommandLine::CommandLine()
{
    m_parser.setApplicationDescription(QStringLiteral(
        "Shows the feature trees of GenICam devices.\n"
        "--write, --run, --get-file, --put-file, --files, --read, --dump and --screenshot need no "
        "display: they wait\nfor the first full update, act in this order, writes and commands "
        "among themselves\nand files among themselves in the order given, and exit\n"
        "(0 done, 1 refused or failed, 2 wrong usage)."));
    for (const Option *option : ALL_OPTIONS) {
        m_parser.addOption(QCommandLineOption(nameOf(*option),
                                              QString::fromLatin1(option->description),
                                              QString::fromLatin1(option->valueName)));
    }
}

bool CommandLine::fail(const QString &text)
{
    m_strError = text;
    return false;
}

bool CommandLine::parse(const QStringList &arguments)
{
    m_options = WorkbenchOptions();
    m_strError.clear();
    if (!m_parser.parse(withJoinedValues(arguments))) {
        return fail(m_parser.errorText());
    }
    if (!m_parser.positionalArguments().isEmpty()) {
        return fail(QStringLiteral("Unexpected argument '%1'.")
                        .arg(m_parser.positionalArguments().constFirst()));
    }
    for (const Option *option : ALL_OPTIONS) {
        const QStringList values =
            option->valueName ? m_parser.values(nameOf(*option)) : QStringList();
        if (values.size() > 1 && !option->repeatable) {
            return fail(
                QStringLiteral("Option '--%1' may be given only once.").arg(nameOf(*option)));
        }
        if (values.contains(QString())) {
            return fail(QStringLiteral("Option '--%1' needs a value.").arg(nameOf(*option)));
        }
    }
    m_options.help = m_parser.isSet(nameOf(HELP));
    m_options.version = m_parser.isSet(nameOf(VERSION));
    m_options.list = m_parser.isSet(nameOf(LIST));
    m_options.devices = m_parser.values(nameOf(DEVICE));
    m_options.descriptions = m_parser.values(nameOf(DESCRIPTION));
    m_options.gigeAddresses = m_parser.values(nameOf(GIGE));
    m_options.usbIds = m_parser.values(nameOf(USB));
    m_options.lintFile = m_parser.value(nameOf(LINT));
    m_options.dumpFile = m_parser.value(nameOf(DUMP));
    m_options.readName = m_parser.value(nameOf(READ));
    m_options.screenshotFile = m_parser.value(nameOf(SCREENSHOT));
    m_options.yes = m_parser.isSet(nameOf(YES));
    m_options.files = m_parser.isSet(nameOf(FILES));
    return takeChoices() && takeFeatureJobs() && takeFileJobs() && checkCombination();
}

bool CommandLine::takeChoices()
{
    static const struct
    {
        const Option *option;
        QStringList choices;
    } TABLE[] = {{&MEMORY_PATTERN, {QStringLiteral("zero"), QStringLiteral("ugly")}},
                 {&LANGUAGE, {QStringLiteral("ENG"), QStringLiteral("CH")}},
                 {&USER_LEVEL, {QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("2")}}};
    for (const auto &row : TABLE) {
        const QString name = nameOf(*row.option);
        if (m_parser.isSet(name) && !row.choices.contains(m_parser.value(name))) {
            return fail(
                QStringLiteral("Option '--%1' takes %2, not '%3'.")
                    .arg(name, row.choices.join(QStringLiteral(" or ")), m_parser.value(name)));
        }
    }
    if (m_parser.value(nameOf(MEMORY_PATTERN)) == QLatin1String("ugly")) {
        m_options.memoryPattern = SimulatorControl::MemoryPattern::Ugly;
    }
    m_options.language = m_parser.value(nameOf(LANGUAGE));
    if (m_parser.isSet(nameOf(USER_LEVEL))) {
        m_options.userLevel = m_parser.value(nameOf(USER_LEVEL)).toInt();
    }
    return true;
}

bool CommandLine::takeFeatureJobs()
{
    QStringList writes = m_parser.values(nameOf(WRITE));
    QStringList runs = m_parser.values(nameOf(RUN));
    for (const QString &option : m_parser.optionNames()) {
        if (option == nameOf(RUN)) {
            m_options.featureJobs.append({FeatureJob::Kind::Run, runs.takeFirst(), QString()});
        } else if (option == nameOf(WRITE)) {
            const QString job = writes.takeFirst();
            const int equals = job.indexOf(QLatin1Char('='));
            if (equals < 1) {
                return fail(
                    QStringLiteral("Option '--write' takes NAME=VALUE, not '%1'.").arg(job));
            }
            m_options.featureJobs.append(
                {FeatureJob::Kind::Write, job.left(equals), job.mid(equals + 1)});
        }
    }
    return true;
}

bool CommandLine::takeFileJobs()
{
    QStringList gets = m_parser.values(nameOf(GET_FILE));
    QStringList puts = m_parser.values(nameOf(PUT_FILE));
    for (const QString &option : m_parser.optionNames()) {
        const bool isGet = option == nameOf(GET_FILE);
        if (!isGet && option != nameOf(PUT_FILE)) {
            continue;
        }
        const QStringList values = (isGet ? gets : puts).takeFirst().split(VALUE_SEPARATOR);
        if (values.size() != 2 || values.contains(QString())) {
            return fail(QStringLiteral("Option '--%1' takes NAME FILE.").arg(option));
        }
        m_options.fileJobs.append(
            {isGet ? FileJob::Kind::Get : FileJob::Kind::Put, values.at(0), values.at(1)});
    }
    return true;
}

bool CommandLine::checkCombination()
{
    if (m_parser.isSet(nameOf(MEMORY_PATTERN)) && m_options.descriptions.isEmpty()) {
        return fail(QStringLiteral("Option '--memory-pattern' needs '--description'."));
    }
    const bool ofOneDevice = !m_options.dumpFile.isEmpty() || !m_options.readName.isEmpty()
        || !m_options.featureJobs.isEmpty() || !m_options.fileJobs.isEmpty() || m_options.files;
    if (ofOneDevice && m_options.namedDevices() > 1) {
        return fail(QStringLiteral("Options '--write', '--run', '--read', '--dump' and those of "
                                   "files work on one device."));
    }
    if (m_options.yes && m_options.featureJobs.isEmpty()) {
        return fail(QStringLiteral("Option '--yes' needs '--write' or '--run'."));
    }
    if (m_options.dumpFile == QLatin1String("-")
        && (!m_options.readName.isEmpty() || m_options.files)) {
        return fail(QStringLiteral(
            "Options '--dump -', '--read' and '--files' all need the standard output."));
    }
    return true;
}
