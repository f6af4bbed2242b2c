#include "host/workbench/CommandLine.h"

#include <algorithm>
#include <iterator>

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
const Option IMPORT{"import", "FILE",
                    "Print what differs from this feature file, and with --yes write the file into "
                    "the device.",
                    false};
const Option EXPORT{"export", "FILE", "Save the features of the device to a feature file.", false};
const Option EXPORT_BAG{"export-bag", "FILE",
                        "Save the features of all devices named to one file, a bag.", false};
const Option COMPARE{"compare", "FILE [FILE2]",
                     "Print what differs between device and feature file, or between two files.",
                     false};
const Option SPLIT_BAG{"split-bag", "FILE DIR", "Put the feature files of a bag in this folder.",
                       false};
const Option YES{"yes", nullptr, "Answer the questions of writes, commands and imports with yes.",
                 false};
const Option SCREENSHOT{"screenshot", "FILE.png", "Save a picture of the window.", false};
const Option HELP{"help", nullptr, "Print this help.", false};
const Option VERSION{"version", nullptr, "Print the version.", false};

const Option *const ALL_OPTIONS[] = {
    &DEVICE,   &DESCRIPTION, &MEMORY_PATTERN, &GIGE,   &USB,        &LIST,    &LINT,
    &LANGUAGE, &USER_LEVEL,  &DUMP,           &READ,   &WRITE,      &RUN,     &FILES,
    &GET_FILE, &PUT_FILE,    &IMPORT,         &EXPORT, &EXPORT_BAG, &COMPARE, &SPLIT_BAG,
    &YES,      &SCREENSHOT,  &HELP,           &VERSION};

QString nameOf(const Option &option)
{
    return QString::fromLatin1(option.name);
}

/// Stands between the two values of one option, which the parser takes for one; no argument can hold it.
const QChar VALUE_SEPARATOR(0);

const Option *const OPTIONS_OF_TWO[] = {&GET_FILE, &PUT_FILE, &SPLIT_BAG};

/// "--get-file NAME FILE" as one argument.
QStringList withJoinedValues(const QStringList &arguments)
{
    QStringList joined;
    for (int i = 0; i < arguments.size(); ++i) {
        const QString &argument = arguments.at(i);
        const bool takesTwo =
            std::any_of(std::begin(OPTIONS_OF_TWO), std::end(OPTIONS_OF_TWO),
                        [&argument](const Option *option) {
                            return argument == QLatin1String("--") + nameOf(*option);
                        });
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
        "--write, --run, --get-file, --put-file, --import, --export, --export-bag, --files, "
        "--read, "
        "--dump and\n--screenshot need no display: they wait for the first full update, act in "
        "this "
        "order, writes and commands\namong themselves and files among themselves in the order "
        "given, and exit\n(0 done, 1 refused or failed, 2 wrong usage). --compare exits with 0 "
        "when "
        "nothing differs,\n1 when something does, 2 when it cannot tell."));
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
    const QStringList further = m_parser.positionalArguments();
    const int taken = m_parser.isSet(nameOf(COMPARE)) ? 1 : 0;
    if (further.size() > taken) {
        return fail(QStringLiteral("Unexpected argument '%1'.").arg(further.at(taken)));
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
    return takeChoices() && takeFeatureJobs() && takeFileJobs() && takeFeatureFileJobs()
        && checkCombination() && checkFeatureFileJobs();
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
            m_options.featureJobs.append({EditJob::Kind::Run, runs.takeFirst(), QString()});
        } else if (option == nameOf(WRITE)) {
            const QString job = writes.takeFirst();
            const int equals = job.indexOf(QLatin1Char('='));
            if (equals < 1) {
                return fail(
                    QStringLiteral("Option '--write' takes NAME=VALUE, not '%1'.").arg(job));
            }
            m_options.featureJobs.append(
                {EditJob::Kind::Write, job.left(equals), job.mid(equals + 1)});
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

bool CommandLine::takeFeatureFileJobs()
{
    static const struct
    {
        const Option *option;
        FeatureFileJob::Kind kind;
    } TABLE[] = {{&IMPORT, FeatureFileJob::Kind::Import},
                 {&EXPORT, FeatureFileJob::Kind::Export},
                 {&EXPORT_BAG, FeatureFileJob::Kind::ExportBag},
                 {&COMPARE, FeatureFileJob::Kind::Compare}};
    for (const auto &row : TABLE) {
        if (m_parser.isSet(nameOf(*row.option))) {
            m_options.featureFileJobs.append({row.kind, m_parser.value(nameOf(*row.option))});
        }
    }
    m_options.secondFile = m_parser.positionalArguments().value(0);
    if (m_parser.isSet(nameOf(SPLIT_BAG))) {
        const QStringList values = m_parser.value(nameOf(SPLIT_BAG)).split(VALUE_SEPARATOR);
        if (values.size() != 2 || values.contains(QString())) {
            return fail(QStringLiteral("Option '--split-bag' takes FILE DIR."));
        }
        m_options.bagFile = values.at(0);
        m_options.bagFolder = values.at(1);
    }
    return true;
}

bool CommandLine::checkFeatureFileJobs()
{
    const bool withoutDevice = !m_options.bagFile.isEmpty() || !m_options.secondFile.isEmpty();
    if (withoutDevice && m_options.namedDevices() > 0) {
        return fail(
            QStringLiteral("'--split-bag FILE DIR' and '--compare FILE FILE2' need no device."));
    }
    const int jobs = m_options.featureFileJobs.size() + (m_options.bagFile.isEmpty() ? 0 : 1);
    const bool isAlone = jobs == 1 && m_options.featureJobs.isEmpty()
        && m_options.fileJobs.isEmpty() && !m_options.files && m_options.readName.isEmpty()
        && m_options.dumpFile.isEmpty() && m_options.screenshotFile.isEmpty();
    if ((m_options.isComparison() || !m_options.bagFile.isEmpty()) && !isAlone) {
        return fail(QStringLiteral("Options '--compare' and '--split-bag' work alone."));
    }
    if (m_parser.isSet(nameOf(IMPORT))
        && (!m_options.readName.isEmpty() || m_options.files
            || m_options.dumpFile == QLatin1String("-"))) {
        return fail(QStringLiteral("Option '--import' and one of '--read', '--files', '--dump -' "
                                   "both need the standard output."));
    }
    return true;
}

bool CommandLine::checkCombination()
{
    if (m_parser.isSet(nameOf(MEMORY_PATTERN)) && m_options.descriptions.isEmpty()) {
        return fail(QStringLiteral("Option '--memory-pattern' needs '--description'."));
    }
    const bool ofOneDevice = !m_options.dumpFile.isEmpty() || !m_options.readName.isEmpty()
        || !m_options.featureJobs.isEmpty() || !m_options.fileJobs.isEmpty() || m_options.files
        || std::any_of(
            m_options.featureFileJobs.cbegin(), m_options.featureFileJobs.cend(),
            [](const FeatureFileJob &job) { return job.kind != FeatureFileJob::Kind::ExportBag; });
    if (ofOneDevice && m_options.namedDevices() > 1) {
        return fail(QStringLiteral("Options '--write', '--run', '--read', '--dump' and those of "
                                   "files but '--export-bag' work on one device."));
    }
    const bool asks = !m_options.featureJobs.isEmpty() || m_parser.isSet(nameOf(IMPORT))
        || (m_options.isComparison() && m_options.secondFile.isEmpty());
    if (m_options.yes && !asks) {
        return fail(QStringLiteral(
            "Option '--yes' needs '--write', '--run', '--import' or '--compare' with a device."));
    }
    if (m_options.dumpFile == QLatin1String("-")
        && (!m_options.readName.isEmpty() || m_options.files)) {
        return fail(QStringLiteral(
            "Options '--dump -', '--read' and '--files' all need the standard output."));
    }
    return true;
}
