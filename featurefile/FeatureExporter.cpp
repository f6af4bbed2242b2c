#include "featurefile/FeatureExporter.h"

#include "DeviceTaskModule/QCameraBasicTask.h"
#include "DeviceTaskModule/QCameraTask.h"
#include "UtilityKit/VexaInterface.h"
#include "featurefile/FeatureFileFilters.h"
#include "featurefile/FeatureFileFormat.h"
#include "featurefile/FeatureFileRules.h"
#include "featurefile/PlainValue.h"
#include "featurefile/RegisterDump.h"
#include "model/ElementWalk.h"
#include "model/EnumRecord.h"

#include <QDebug>

namespace {

constexpr int POLLING_SETS = 8;
constexpr quint32 POLLING_OFF = 2;
constexpr qint64 MOST_TEXT = 4 * FeatureFileFormat::MAX_FILE_SIZE;

QString lastChildText(const QDomElement &element, const QString &tag)
{
    return ElementWalk::text(element.lastChildElement(tag));
}

} // namespace

bool FeatureJob::isGigE() const
{
    const unsigned int type = pBasicTask->_GetDevType();
    return type == DEVICE_TYPE_GIGE || type == DEVICE_TYPE_GIGE_VIRTUAL;
}

FeatureExporter::FeatureExporter(const FeatureJob &job)
    : m_job(job)
    , m_pTask(job.pBasicTask->_CameraTak())
    , m_categoryFeatures(job.categoryFeatures.cbegin(), job.categoryFeatures.cend())
    , m_context(job.nodes, job.selectedLinks, m_pTask, job.isGigE(), job.pStop, job.limits)
{
    const QString interface = FeatureFileFilters::interfaceName(m_pTask->deviceType());
    m_exclusions = job.filters.value(interface, FeatureFileFilters::builtIn());
}

bool FeatureExporter::build(QString *text)
{
    FeatureFileWriter writer(VexaInterface::softwareVersion());
    if (!writeHeader(writer)) {
        return false;
    }
    *m_job.pDone = 0;
    *m_job.pTotal = m_job.nodes.size();
    for (auto it = m_job.nodes.cbegin(); it != m_job.nodes.cend(); ++it) {
        if (m_job.isStopped()
            || exportNode(it.key(), m_context.node(it.key()), writer) == Step::End) {
            return false;
        }
        ++*m_job.pDone;
    }
    writer.finish();
    *text = writer.text();
    m_report.remarks += m_context.remarks();
    remarkOnText(writer);
    return !m_job.isStopped();
}

FeatureExporter::Step FeatureExporter::endAt(const QString &node)
{
    const QString remark = m_pTask->GetLastErrorRemark();
    qCritical().noquote() << QStringLiteral("export ends at %1:%2").arg(node, remark);
    m_report.failure = FeatureFileFailure::Device;
    m_report.failureDetail = QStringLiteral("%1: %2").arg(node, remark);
    return Step::End;
}

bool FeatureExporter::writeHeader(FeatureFileWriter &writer)
{
    QString firmwareTag;
    QString firmware;
    int error = 0;
    if (!FeatureFileRules::readFirmware(m_pTask, &firmwareTag, &firmware, &error)) {
        if (FeatureFileRules::isGone(error)) {
            endAt(firmwareTag);
        } else {
            m_report.failure = FeatureFileFailure::NoFirmware;
        }
        return false;
    }
    writer.addHeader(firmwareTag, firmware);
    writer.addHeader(FeatureFileFormat::ELEMENT_MODEL, m_job.pBasicTask->_GetCameraModelName());
    error = 0;
    _NODE_INT_VALUE_ board = {};
    if (m_pTask->GetIntegerValue(FeatureFileFormat::ELEMENT_BOARD_TYPE, &board, &error, true, false)
        && error == 0) {
        writer.addHeader(FeatureFileFormat::ELEMENT_BOARD_TYPE, QString::number(board.value));
    }
    writer.beginFeatures();
    return true;
}

/// What names and description decide, before the device is asked.
bool FeatureExporter::leaveOut(const QString &name, const QDomElement &element)
{
    std::optional<FeatureFileReason> reason =
        FeatureFileRules::exclusionOf(name, element, m_exclusions);
    if (FeatureFileRules::isLeftOutByWords(
            name, lastChildText(element, QStringLiteral("pIsImplemented")),
            lastChildText(element, QStringLiteral("pIsAvailable")))) {
        reason = FeatureFileReason::Excluded;
    } else if (FeatureFileRules::isIdentity(name)) {
        reason = FeatureFileReason::Identity;
    } else if (!reason && element.tagName() == QLatin1String("Command")) {
        reason = FeatureFileReason::Command;
    }
    if (reason) {
        m_report.leftOut.append({name, *reason, QString()});
    }
    return reason.has_value();
}

bool FeatureExporter::isConditionMet(const QString &node, Step *step)
{
    int error = 0;
    _NODE_INT_VALUE_ value = {};
    const bool done = m_pTask->GetIntegerValue(node, &value, &error, true, false);
    if (!done && FeatureFileRules::isGone(error)) {
        *step = endAt(node);
    }
    return done && value.value != 0;
}

FeatureExporter::Step FeatureExporter::exportNode(const QString &name, const QDomElement &element,
                                                  FeatureFileWriter &writer)
{
    // Which nodes a file has is decided without the device as far as can be: its answers would not be used.
    if (!m_categoryFeatures.contains(name) || element.tagName() == QLatin1String("Category")
        || leaveOut(name, element)) {
        return Step::Next;
    }
    m_context.beginNode(name);
    Step step = Step::Next;
    const QString implemented = lastChildText(element, QStringLiteral("pIsImplemented"));
    const bool isPolling = FeatureFileRules::isPollingParameter(name);
    const bool needsQuality =
        FeatureFileRules::needsQuality(lastChildText(element, QStringLiteral("pIsAvailable")));
    if ((needsQuality && !isConditionMet(QStringLiteral("Quality1DEnable_Inq"), &step))
        || (!isPolling && !implemented.isEmpty() && !isConditionMet(implemented, &step))) {
        m_report.leftOut.append({name, FeatureFileReason::Condition, QString()});
        return step;
    }
    const int turns = isPolling ? pollingTurns(&step) : 1;
    for (int turn = 0; turn < turns && step == Step::Next; ++turn) {
        if (turns == 1 || selectPollingParameter(turn, name, &step)) {
            step = exportTurn(name, element, writer);
        }
    }
    return step;
}

int FeatureExporter::pollingTurns(Step *step)
{
    const EnumRecord record;
    int error = 0;
    if (!record) {
        m_report.failure = FeatureFileFailure::Memory;
        *step = Step::End;
        return 0;
    }
    const QString node = QStringLiteral("PollingEnable");
    if (!m_pTask->GetEnumerationValue(node, record.get(), &error, true, false)) {
        *step = FeatureFileRules::isGone(error) ? endAt(node) : Step::Next;
        return 1;
    }
    return (record->value & ~POLLING_OFF) != 0 ? POLLING_SETS : 1;
}

bool FeatureExporter::selectPollingParameter(int turn, const QString &name, Step *step)
{
    int error = -1;
    const QString node = QStringLiteral("PollingParam");
    m_report.bPollingParamWritten = true;
    if (m_pTask->SetEnumerationValue(node, static_cast<quint32>(turn), &error)) {
        return true;
    }
    qCritical().noquote() << QStringLiteral("PollingParam %1 failed:%2, %3 is left out of it")
                                 .arg(turn)
                                 .arg(m_pTask->GetLastErrorRemark(), name);
    m_report.leftOut.append(
        {name, FeatureFileReason::TurnSkipped, QStringLiteral("PollingParam %1").arg(turn)});
    if (FeatureFileRules::isGone(error)) {
        *step = endAt(node);
    } else if (m_job.isStopped()) {
        *step = Step::End;
    }
    return false;
}

bool FeatureExporter::dump(const QString &name, FeatureFileWriter &writer, bool *noLength)
{
    QString text;
    const RegisterDump::Outcome outcome = RegisterDump::write(m_context, name, &text);
    *noLength = outcome == RegisterDump::Outcome::NoLength;
    if (outcome != RegisterDump::Outcome::Done) {
        return false;
    }
    // The file is useless by then, and a text has an end.
    if (writer.text().size() > MOST_TEXT) {
        return m_context.fail(QStringLiteral("%1 is left out of a file too large").arg(name));
    }
    writer.addComplexFeature(name, text);
    remarkOnSelection(name, text);
    return true;
}

FeatureExporter::Step FeatureExporter::exportTurn(const QString &name, const QDomElement &element,
                                                  FeatureFileWriter &writer)
{
    bool noLength = false;
    QString remark;
    bool isDone = m_context.collectSelectors(name) && dump(name, writer, &noLength);
    if (!isDone && !noLength && !m_job.isStopped()) {
        if (exportValue(name, element.tagName(), writer, &isDone, &remark) == Step::End) {
            return Step::End;
        }
        isDone = isDone || dump(name, writer, &noLength);
    }
    if (noLength) {
        m_report.leftOut.append({name, FeatureFileReason::NoLength, QString()});
    } else if (!isDone) {
        m_report.leftOut.append({name, FeatureFileReason::Unreadable, remark});
    }
    return m_job.isStopped() ? Step::End : Step::Next;
}

FeatureExporter::Step FeatureExporter::exportValue(const QString &name, const QString &tag,
                                                   FeatureFileWriter &writer, bool *isDone,
                                                   QString *remark)
{
    QString text;
    int error = 0;
    bool isExact = true;
    switch (PlainValue::read(m_pTask, tag, name, &text, &error, &isExact)) {
    case PlainValue::Outcome::Done:
        *isDone = true;
        writer.addFeature(name, tag, text);
        if (!isExact) {
            const bool isFloat = tag == QLatin1String("Float");
            m_report.remarks.append(
                {name, isFloat ? FeatureFileReason::FewDigits : FeatureFileReason::TooLarge, text});
        }
        remarkOnSelection(name, QString());
        return Step::Next;
    case PlainValue::Outcome::NoMemory:
        m_report.failure = FeatureFileFailure::Memory;
        return Step::End;
    case PlainValue::Outcome::Failed:
        *remark = m_pTask->GetLastErrorRemark();
        return FeatureFileRules::isHarmless(error) ? Step::Next : endAt(name);
    default:
        return Step::Next;
    }
}

/// A selector that stands in a register of the device is not walked through.
void FeatureExporter::remarkOnSelection(const QString &name, const QString &text)
{
    for (const QString &selector : m_context.selectorsOf(name)) {
        const QDomElement value =
            m_context.node(selector).firstChildElement(QStringLiteral("pValue"));
        const QString key = value.isNull() ? selector : ElementWalk::text(value);
        if (!text.contains(QLatin1Char('[') + key + QLatin1Char(':'))
            && !text.contains(QLatin1Char('[') + selector + QLatin1Char(':'))) {
            m_context.addRemark(name, FeatureFileReason::PresentSelection, selector);
        }
    }
}

void FeatureExporter::remarkOnText(const FeatureFileWriter &writer)
{
    for (const FeatureFileWriter::Culprit &culprit : writer.culprits()) {
        m_report.remarks.append(
            {culprit.name, FeatureFileReason::Text,
             culprit.unreadable ? QStringLiteral("the file cannot be read") : QString()});
    }
    const qint64 size = writer.text().toUtf8().size();
    if (size > FeatureFileFormat::MAX_FILE_SIZE) {
        m_report.remarks.append(
            {QString(), FeatureFileReason::FileTooLarge, QString::number(size)});
    }
}
