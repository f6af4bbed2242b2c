#include "featurefile/FeatureImporter.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "UtilityKit/VexaInterface.h"
#include "featurefile/FeatureFileFilters.h"
#include "featurefile/FeatureFileFormat.h"
#include "featurefile/FeatureFileRules.h"
#include "featurefile/PlainValue.h"
#include "featurefile/RegisterDump.h"

#include <QDebug>

#include <algorithm>

namespace {

constexpr int LAST_PASS = 10;
constexpr unsigned int SCAN_TYPE_AREA = 1;

/// The types of each sweep, in the order of the sweeps; register dumps follow.
const QVector<QStringList> &sweeps()
{
    static const QVector<QStringList> TYPES = {{QStringLiteral("Boolean")},
                                               {QStringLiteral("Enumeration")},
                                               {QStringLiteral("Integer"), QStringLiteral("IntReg"),
                                                QStringLiteral("Float"),
                                                QStringLiteral("StringReg")}};
    return TYPES;
}

QStringList namesThatComeAgain(const FeatureFileDocument &document)
{
    QHash<QString, int> times;
    QStringList again;
    for (const FeatureFileEntry &entry : document.entries) {
        if (!entry.name.isEmpty() && ++times[entry.name] == 2) {
            again += entry.name;
        }
    }
    return again;
}

} // namespace

FeatureImporter::FeatureImporter(const FeatureJob &job)
    : m_job(job)
    , m_pTask(job.pBasicTask->_CameraTak())
    , m_exclusions(FeatureFileFilters::builtIn())
    , m_context(job.nodes, job.selectedLinks, m_pTask, job.isGigE(), job.pStop, job.limits)
{
    if (job.pBasicTask->_GetCamSacnType() != SCAN_TYPE_AREA) {
        m_exclusions += QStringLiteral("AcquisitionLineRateEnable");
        m_exclusions += QStringLiteral("AcquisitionLineRate");
    }
}

bool FeatureImporter::end(quint32 result)
{
    m_nResult = result;
    return false;
}

bool FeatureImporter::noteGone(int error)
{
    m_bGone = m_bGone || FeatureFileRules::isGone(error);
    return m_bGone;
}

bool FeatureImporter::run(const QString &text, bool compare)
{
    m_bCompare = compare;
    FeatureFileDocument document;
    QString reason;
    if (!FeatureFileReader::parse(text, &document, &reason)) {
        qCritical().noquote() << QLatin1String("feature file refused: ") + reason;
        return end(FEATURE_FILE_UNREADABLE);
    }
    if (compare && !validate(document)) {
        return m_bGone ? end(FEATURE_FILE_NO_DEVICE) : false;
    }
    if (!document.hasFeatures) {
        return end(FEATURE_FILE_NO_FEATURES);
    }
    m_report.severalTimes = namesThatComeAgain(document);
    const bool done = runPasses(document);
    if (!compare) {
        reportTheRest(document);
    }
    return m_bGone ? end(FEATURE_FILE_NO_DEVICE) : done;
}

bool FeatureImporter::validate(const FeatureFileDocument &document)
{
    if (document.version.isEmpty()) {
        return end(FEATURE_FILE_VERSION);
    }
    if (document.version != VexaInterface::softwareVersion()) {
        // The user may go on in spite of it.
        m_nResult = FEATURE_FILE_VERSION;
    }
    const QString model = FeatureFileFormat::ELEMENT_MODEL;
    const bool matches = boardMatches(document) && firmwareMatches(document)
        && document.header.contains(model)
        && document.header.value(model) == m_job.pBasicTask->_GetCameraModelName();
    return matches || end(FEATURE_FILE_MISMATCH);
}

bool FeatureImporter::boardMatches(const FeatureFileDocument &document)
{
    const QString tag = FeatureFileFormat::ELEMENT_BOARD_TYPE;
    if (!document.header.contains(tag)) {
        return true;
    }
    int error = 0;
    _NODE_INT_VALUE_ board = {};
    const bool done = m_pTask->GetIntegerValue(tag, &board, &error, true, false) && error == 0;
    return !noteGone(error) && done && document.header.value(tag) == QString::number(board.value);
}

bool FeatureImporter::firmwareMatches(const FeatureFileDocument &document)
{
    QString tag;
    QString firmware;
    int error = 0;
    if (!FeatureFileRules::readFirmware(m_pTask, &tag, &firmware, &error)) {
        noteGone(error);
        return false;
    }
    return document.header.contains(tag) && document.header.value(tag) == firmware;
}

bool FeatureImporter::runPasses(const FeatureFileDocument &document)
{
    *m_job.pDone = 0;
    *m_job.pTotal = document.entries.size();
    for (m_nPass = 0;; ++m_nPass) {
        m_nFailCount = 0;
        m_nChangedCount = 0;
        m_refused.clear();
        if (m_job.isStopped() || !runPass(document)) {
            return false;
        }
        if ((m_nFailCount < 1 && m_nChangedCount < 1) || m_nPass >= LAST_PASS || m_bCompare) {
            return true;
        }
        *m_job.pDone = 0;
    }
}

bool FeatureImporter::runPass(const FeatureFileDocument &document)
{
    for (const QStringList &types : sweeps()) {
        for (const FeatureFileEntry &entry : document.entries) {
            if (entry.isComplex || !types.contains(entry.type)) {
                continue;
            }
            ++*m_job.pDone;
            if (exclusionOf(entry)) {
                continue;
            }
            const int error = setFeatureIntoDevice(entry.name, entry.type, entry.value);
            if (m_job.isStopped() || m_bGone) {
                qCritical().noquote()
                    << QStringLiteral("setFeatureIntoDevice failed.featureName:%1 value:%2")
                           .arg(entry.name, entry.value);
                return end(FEATURE_FILE_STOPPED);
            }
            if (!FeatureFileRules::isHarmless(error)) {
                ++m_nFailCount;
            }
        }
    }
    return std::all_of(document.entries.cbegin(), document.entries.cend(),
                       [this](const FeatureFileEntry &entry) {
                           return !entry.isComplex || (++*m_job.pDone, importRegisters(entry));
                       });
}

std::optional<FeatureFileReason> FeatureImporter::exclusionOf(const FeatureFileEntry &entry) const
{
    std::optional<FeatureFileReason> reason;
    for (const QString &name : entry.names) {
        if (FeatureFileRules::isIdentity(name)) {
            return FeatureFileReason::Identity;
        }
        reason = FeatureFileRules::exclusionOf(name, m_context.node(name), m_exclusions);
        if (reason) {
            return reason;
        }
    }
    return reason;
}

bool FeatureImporter::holdsAlready(const QString &name, const QString &type, const QString &value)
{
    QString deviceText;
    int error = 0;
    const PlainValue::Outcome outcome = PlainValue::read(m_pTask, type, name, &deviceText, &error);
    return noteGone(error) || (outcome == PlainValue::Outcome::Done && deviceText == value);
}

/// Of entries that are never applied, where the device is not as they say; also of types that no sweep takes.
void FeatureImporter::tellOfExcluded(const FeatureFileDocument &document)
{
    for (const FeatureFileEntry &entry : document.entries) {
        const std::optional<FeatureFileReason> reason = exclusionOf(entry);
        const bool isKnown = entry.isComplex
            || std::any_of(sweeps().cbegin(), sweeps().cend(), [&entry](const QStringList &types) {
                                 return types.contains(entry.type);
                             });
        if (m_job.isStopped() || entry.name.isEmpty() || (isKnown && !reason)
            || holdsAlready(entry.name, entry.type, entry.value)) {
            continue;
        }
        m_report.notImported.append({entry.name, reason.value_or(FeatureFileReason::Excluded),
                                     isKnown ? QString() : entry.type});
    }
}

/// An empty value is passed over, which loses nothing where the device's is empty too.
void FeatureImporter::tellOfEmpty(const QString &name, const QString &type)
{
    if (type != QLatin1String("StringReg")) {
        noteNotCarriable(name, QString());
    } else if (!holdsAlready(name, type, QString())) {
        m_report.notImported.append({name, FeatureFileReason::Text, QString()});
    }
}

int FeatureImporter::setFeatureIntoDevice(const QString &name, const QString &type,
                                          const QString &value)
{
    if (name.isEmpty() || type.isEmpty() || value.isEmpty()) {
        if (!name.isEmpty() && !type.isEmpty() && !m_bCompare && m_nPass == 0) {
            tellOfEmpty(name, type);
        }
        return 0;
    }
    QString deviceText;
    int error = 0;
    const PlainValue::Outcome outcome = PlainValue::read(m_pTask, type, name, &deviceText, &error);
    if (outcome == PlainValue::Outcome::NoMemory || noteGone(error)) {
        return 0;
    }
    const bool isRead = outcome == PlainValue::Outcome::Done;
    const QString remark = isRead ? QString() : m_pTask->GetLastErrorRemark();
    bool isKnown = isRead;
    const bool differs =
        isRead ? deviceText != value : compareByRegisters(name, type, value, &isKnown);
    if (!m_bCompare && !differs && !isKnown) {
        noteRefused(name, FeatureFileReason::Refused, remark);
    }
    if (m_bCompare && isRead && differs) {
        differ(name, m_job.featureCategories.value(name), value, deviceText);
    }
    if (!m_bCompare && differs && !m_bGone && !m_job.isStopped()) {
        writePlain(name, type, value, &error);
    }
    return error;
}

void FeatureImporter::writePlain(const QString &name, const QString &type, const QString &value,
                                 int *error)
{
    switch (PlainValue::write(m_pTask, type, name, value, error)) {
    case PlainValue::Outcome::NoNumber:
        noteNotCarriable(name, value);
        return;
    case PlainValue::Outcome::Done:
        noteWritten(name);
        break;
    default:
        noteRefused(name, FeatureFileReason::Refused, m_pTask->GetLastErrorRemark());
        noteGone(*error);
        break;
    }
    ++m_nChangedCount;
}

bool FeatureImporter::compareByRegisters(const QString &name, const QString &type,
                                         const QString &value, bool *isKnown)
{
    int error = 0;
    const int mode = m_pTask->GetAccessMode(name, &error);
    if (noteGone(error) || mode != NODE_NA) {
        return false;
    }
    bool isNodeValue = false;
    const QString deviceText = RegisterDump::readNodeFromRegisters(m_context, name, &isNodeValue);
    *isKnown = !deviceText.isEmpty();
    bool differs = false;
    if (type == QLatin1String("Integer") || type == QLatin1String("IntReg")
        || type == QLatin1String("Enumeration")) {
        differs = deviceText.toInt() != value.toInt();
    } else if (type == QLatin1String("StringReg") || type == QLatin1String("Float")) {
        differs = deviceText != value;
    }
    if (differs && m_bCompare) {
        // Bits that mean something else are not shown as a value.
        differ(name, m_job.featureCategories.value(name), value,
               isNodeValue ? deviceText : QString());
    }
    return differs;
}

void FeatureImporter::differ(const QString &name, const QString &category, const QString &fileValue,
                             const QString &deviceValue)
{
    m_differences[category].append(
        {name, fileValue, deviceValue.isEmpty() ? QStringLiteral("/") : deviceValue});
}

void FeatureImporter::noteWritten(const QString &name)
{
    if (!m_changedSet.contains(name)) {
        m_changedSet.insert(name);
        m_changed += name;
    }
}

/// Whatever a parse makes of such a text, it would be another value than the file's.
void FeatureImporter::noteNotCarriable(const QString &name, const QString &text)
{
    if (!m_notCarriable.contains(name)) {
        m_notCarriable.insert(name);
        m_report.notImported.append({name, FeatureFileReason::NotCarriable, text});
        qCritical().noquote() << QStringLiteral("%1: %2 is not written").arg(name, text);
    }
}

void FeatureImporter::noteRefused(const QString &name, FeatureFileReason reason,
                                  const QString &detail)
{
    m_refused.append({name, reason, detail});
}

/// At the end: what the device works out by itself has followed what was written, and registers of the file may lie on
/// each other.
void FeatureImporter::reportTheRest(const FeatureFileDocument &document)
{
    m_report.changed = m_changed;
    tellOfExcluded(document);
    for (const FeatureFileEntry *entry : m_unwritable) {
        tellOfUnwritable(*entry);
    }
    m_report.notImported += m_refused;
    if (m_nPass >= LAST_PASS) {
        tellOfUnsettled(document);
    }
}

/// What the last pass could not bring to rest, and has no other reason.
void FeatureImporter::tellOfUnsettled(const FeatureFileDocument &document)
{
    const quint32 result = m_nResult;
    m_bCompare = true;
    for (const FeatureFileEntry &entry : document.entries) {
        if (m_job.isStopped() || m_bGone) {
            break;
        }
        if (entry.isComplex) {
            importRegisters(entry);
        } else if (!exclusionOf(entry)) {
            setFeatureIntoDevice(entry.name, entry.type, entry.value);
        }
    }
    m_bCompare = false;
    m_nResult = result;
    QSet<QString> told;
    for (const FeatureFileNote &note : qAsConst(m_report.notImported)) {
        told.insert(note.name);
    }
    for (const QList<FeatureDifference> &category : qAsConst(m_differences)) {
        for (const FeatureDifference &difference : category) {
            const QString &name = difference.name;
            if (!told.contains(name)
                && !m_report.severalTimes.contains(name.section(QLatin1Char('['), 0, 0))) {
                m_report.notImported.append({name, FeatureFileReason::NotTaken, QString()});
            }
        }
    }
}
