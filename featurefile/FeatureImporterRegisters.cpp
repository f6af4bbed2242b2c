// Register dumps of a feature file, compared with the device and written into it.

#include "DeviceTaskModule/QCameraTask.h"
#include "UtilityKit/VexaInterface.h"
#include "featurefile/FeatureFileRules.h"
#include "featurefile/FeatureImporter.h"

#include <QDebug>

#include <limits>

namespace {

constexpr int DECIMALS = 6;
constexpr qint64 WORD = 4;
constexpr qint64 HIGHEST_ADDRESS = std::numeric_limits<qint64>::max();
constexpr qint64 HIGHEST_WORD = std::numeric_limits<quint32>::max();

bool parse(const QString &text, qint64 most, qint64 *number)
{
    return EvalContext::parseNumber(text, number) && *number >= 0 && *number <= most;
}

} // namespace

bool FeatureImporter::isRegisterWritable(const QString &node)
{
    int error = 0;
    const int mode = m_pTask->GetAccessMode(node, &error);
    return !noteGone(error) && error == 0 && (mode == NODE_WO || mode == NODE_RW);
}

bool FeatureImporter::importRegisters(const FeatureFileEntry &entry)
{
    if (exclusionOf(entry)) {
        return true;
    }
    if (!entry.reg.isEmpty() && !isRegisterWritable(entry.reg)) {
        m_unwritable.insert(&entry);
        return !m_bGone;
    }
    m_unwritable.erase(&entry);
    if (entry.length.isEmpty()) {
        qCritical().noquote() << QStringLiteral("Import %1 failed. no value len").arg(entry.name);
        return end(FEATURE_FILE_STOPPED);
    }
    qint64 length = 0;
    if (!prepareBuffer(entry, &length)) {
        qCritical().noquote()
            << QStringLiteral("Import %1 failed.malloc %2 failed.").arg(entry.name, entry.length);
        return end(FEATURE_FILE_STOPPED);
    }
    for (const FeatureFileRegister &row : entry.registers) {
        if (m_job.isStopped()) {
            return false;
        }
        qint64 address = 0;
        const bool isGood = parse(row.address, HIGHEST_ADDRESS, &address) && !row.text.isEmpty();
        if (!isGood
            || !(m_bCompare ? compareRegister(entry, row, length)
                            : applyRegister(entry, row, length))) {
            return end(FEATURE_FILE_STOPPED);
        }
    }
    return true;
}

bool FeatureImporter::prepareBuffer(const FeatureFileEntry &entry, qint64 *length)
{
    *length = VexaInterface::string2Int(entry.length);
    m_bSwap = m_context.isGigE() && *length == WORD;
    return RegisterWords::isLengthAllowed(*length) && m_buffer.prepare(*length);
}

/// A register that cannot be written now is passed over; of interest only where it would have had to be.
void FeatureImporter::tellOfUnwritable(const FeatureFileEntry &entry)
{
    qint64 length = 0;
    if (!prepareBuffer(entry, &length)) {
        return;
    }
    for (const FeatureFileRegister &row : entry.registers) {
        qint64 address = 0;
        QString deviceWords;
        if (!m_job.isStopped() && !m_bGone && parse(row.address, HIGHEST_ADDRESS, &address)
            && readRegister(row, length, &deviceWords) && registerDiffers(row, deviceWords)) {
            m_report.notImported.append(
                {entry.name + row.variables, FeatureFileReason::NotWritable, entry.reg});
        }
    }
}

/// Behind a converter the first word alone is compared.
bool FeatureImporter::registerDiffers(const FeatureFileRegister &row, const QString &deviceWords)
{
    return row.to.isEmpty() ? deviceWords != row.text
                            : deviceWords.section(QLatin1Char(','), 0, 0) != row.to;
}

bool FeatureImporter::applyRegister(const FeatureFileEntry &entry, const FeatureFileRegister &row,
                                    qint64 length)
{
    QString deviceWords;
    const bool isRead = readRegister(row, length, &deviceWords);
    if (isRead && !registerDiffers(row, deviceWords)) {
        return true;
    }
    if (m_bGone) {
        return false;
    }
    const QString remark = isRead ? QString() : m_pTask->GetLastErrorRemark();
    const int words = row.to.isEmpty() ? row.text.count(QLatin1Char(',')) + 1 : 1;
    if (RegisterWords::isMisaligned(VexaInterface::string2Int(row.address))) {
        noteRefused(entry.name + row.variables, FeatureFileReason::NotWritable, row.address);
    } else if (!isRead && words < m_buffer.words()) {
        // What the file does not say of the register is not known.
        noteRefused(entry.name + row.variables, FeatureFileReason::Refused, remark);
    } else {
        writeRegister(entry, row, length);
    }
    return !m_bGone;
}

bool FeatureImporter::readRegister(const FeatureFileRegister &row, qint64 length,
                                   QString *deviceWords)
{
    const qint64 address = VexaInterface::string2Int(row.address);
    const bool misaligned = RegisterWords::isMisaligned(address);
    int error = 0;
    quint32 *words = m_buffer.data();
    if (!m_pTask->ReadMemory(address, words, length, &error)) {
        qCritical().noquote() << QStringLiteral("SetValueFromReg  failed:%1 addr:%2")
                                     .arg(m_pTask->GetLastErrorRemark(), row.address);
        if (noteGone(error) || !misaligned
            || !RegisterWords::readAcross(address, words, [this](qint64 at, quint32 *word) {
                   return m_pTask->ReadMemory(at, word, WORD, nullptr);
               })) {
            return false;
        }
    }
    QStringList texts;
    for (int index = 0; index < m_buffer.words(); ++index) {
        texts += QString::number(RegisterWords::swapThenRotate(words[index], m_bSwap, misaligned));
    }
    *deviceWords = texts.join(QLatin1Char(','));
    return true;
}

bool FeatureImporter::compareRegister(const FeatureFileEntry &entry, const FeatureFileRegister &row,
                                      qint64 length)
{
    QString deviceWords;
    if (!readRegister(row, length, &deviceWords)) {
        return false;
    }
    if (!registerDiffers(row, deviceWords)) {
        return true;
    }
    const QString name = entry.name + row.variables;
    const QString category = m_job.featureCategories.value(entry.name);
    if (!row.to.isEmpty()) {
        const QString word = deviceWords.section(QLatin1Char(','), 0, 0);
        QString formula = row.from;
        formula.replace(QLatin1String("TO"), word);
        m_context.beginNode(entry.name);
        double value = 0.0;
        const QString text = m_context.compute(entry.name, formula, &value)
            ? QString::number(value, 'f', DECIMALS)
            : QString();
        if (text != row.text) {
            differ(name, category, row.text, text);
        }
        return true;
    }
    const auto shown = [this](const QString &text) {
        qint64 number = 0;
        return m_buffer.words() == 1 && parse(text, HIGHEST_WORD, &number)
            ? VexaInterface::Int2HexNumberQString(number)
            : text;
    };
    differ(name, category, shown(row.text), shown(deviceWords));
    return true;
}

bool FeatureImporter::fillBuffer(const FeatureFileEntry &entry, const FeatureFileRegister &row)
{
    const QStringList parts =
        row.to.isEmpty() ? row.text.split(QLatin1Char(',')) : QStringList(row.to);
    if (row.to.isEmpty() && parts.size() != m_buffer.words()) {
        qWarning().noquote() << QStringLiteral("%1 addr:%2 has %3 words in the file, not %4")
                                    .arg(entry.name, row.address)
                                    .arg(parts.size())
                                    .arg(m_buffer.words());
    }
    for (int index = 0; index < qMin(parts.size(), m_buffer.words()); ++index) {
        qint64 number = 0;
        if (!parse(parts.at(index), HIGHEST_WORD, &number)) {
            return false;
        }
        const auto word = static_cast<quint32>(number);
        m_buffer.data()[index] = m_bSwap ? RegisterWords::swapped(word) : word;
    }
    return true;
}

void FeatureImporter::writeRegister(const FeatureFileEntry &entry, const FeatureFileRegister &row,
                                    qint64 length)
{
    const qint64 address = VexaInterface::string2Int(row.address);
    if (!fillBuffer(entry, row)) {
        noteNotCarriable(entry.name + row.variables, row.text);
        return;
    }
    ++m_nChangedCount;
    int error = 0;
    if (m_pTask->WriteMemory(address, m_buffer.data(), length, &error)) {
        noteWritten(entry.name + row.variables);
        return;
    }
    const QString remark = m_pTask->GetLastErrorRemark();
    qCritical().noquote()
        << QStringLiteral("SetValueFromReg  failed:%1 addr:%2").arg(remark, row.address);
    noteRefused(entry.name + row.variables, FeatureFileReason::Refused, remark);
    if (!noteGone(error) && (m_nPass == 0 || !hasTaken(entry.name, address, length))) {
        ++m_nFailCount;
    }
}

/// After a failed write: whether the word is there all the same, or cannot be written now anyway.
bool FeatureImporter::hasTaken(const QString &name, qint64 address, qint64 length)
{
    quint32 word = 0;
    if (length == WORD && m_pTask->ReadMemory(address, &word, WORD, nullptr)
        && word == *m_buffer.data()) {
        return true;
    }
    return !isRegisterWritable(name);
}
