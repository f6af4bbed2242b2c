#include "featurefile/RegisterDump.h"

#include "DeviceTaskModule/QCameraTask.h"
#include "featurefile/ConverterFormula.h"
#include "featurefile/FeatureFileWriter.h"
#include "featurefile/RegisterWords.h"
#include "model/ElementWalk.h"

#include <limits>

namespace {

constexpr qint64 WORD = 4;
constexpr int DECIMALS = 6;

/// A register and what it needs to be read at each of its addresses.
class Reading
{
public:
    Reading(EvalContext &context, const QDomElement &reg, const QDomElement &converter,
            qint64 length)
        : m_context(context)
        , m_reg(reg)
        , m_nLength(length)
        , m_bSwap(context.isGigE() && length == WORD)
        , m_converter(context, converter, reg)
        , m_bConverted(!converter.isNull())
    {
    }

    ConverterFormula &converter() { return m_converter; }

    bool readAt(const _FORMULA_RESULT_ &address)
    {
        if (m_context.isStopped()) {
            return false;
        }
        if (!m_buffer.prepare(m_nLength)) {
            return m_context.fail(QStringLiteral("malloc size  failed:%1 size:%2")
                                      .arg(ElementWalk::name(m_reg))
                                      .arg(m_nLength));
        }
        if (!m_context.readRegister(m_reg, address, m_nLength, m_buffer)) {
            return false;
        }
        m_bMisaligned = RegisterWords::isMisaligned(EvalContext::addressText(address).toLongLong());
        return true;
    }
    QString words()
    {
        QStringList texts;
        for (int index = 0; index < m_buffer.words(); ++index) {
            texts += QString::number(
                RegisterWords::rotateThenSwap(m_buffer.data()[index], m_bSwap, m_bMisaligned));
        }
        return texts.join(QLatin1Char(','));
    }
    quint32 firstWord()
    {
        return RegisterWords::swapThenRotate(*m_buffer.data(), m_bSwap, m_bMisaligned);
    }
    /// Whether the word is the number that the register holds: of four bytes in the order that is read, without bits of
    /// other nodes. A negative number would look like a large one.
    bool isNumber()
    {
        const bool isBigEndian =
            ElementWalk::text(m_reg.firstChildElement(QStringLiteral("Endianess")))
            == QLatin1String("BigEndian");
        return m_nLength == WORD && m_reg.tagName() == QLatin1String("IntReg")
            && isBigEndian == m_context.isGigE()
            && firstWord() <= static_cast<quint32>(std::numeric_limits<qint32>::max());
    }
    int wordCount() const { return RegisterWords::count(m_nLength); }
    bool isConverted() const { return m_bConverted; }

private:
    EvalContext &m_context;
    const QDomElement m_reg;
    const qint64 m_nLength;
    const bool m_bSwap;
    ConverterFormula m_converter;
    const bool m_bConverted;
    RegisterBuffer m_buffer;
    bool m_bMisaligned = false;
};

/// One `RegValue` line; the text of a converted register goes through its formula.
bool appendLine(Reading &reading, const _FORMULA_RESULT_ &address, int index, QString *text)
{
    if (!reading.readAt(address)) {
        return false;
    }
    const QString place = EvalContext::addressText(address);
    if (!reading.isConverted()) {
        *text += FeatureFileWriter::regValue(place, address.variables, reading.words());
        return true;
    }
    QString from;
    double value = 0.0;
    if (!reading.converter().formulaAt(index, &from)
        || !reading.converter().valueOf(from, reading.firstWord(), &value)) {
        return false;
    }
    *text += FeatureFileWriter::regValue(
        place, address.variables, QString::number(value, 'f', DECIMALS), reading.firstWord(), from);
    return true;
}

} // namespace

RegisterDump::Outcome RegisterDump::write(EvalContext &context, const QString &name, QString *text)
{
    QDomElement converter;
    const QDomElement reg = context.findRegElement(context.node(name), &converter);
    if (reg.isNull()) {
        context.fail(QStringLiteral("Reg is empty failed:%1").arg(name));
        return Outcome::Failed;
    }
    qint64 length = 0;
    const EvalContext::Length known = context.registerLength(reg, &length);
    if (known != EvalContext::Length::Known) {
        return known == EvalContext::Length::Zero ? Outcome::NoLength : Outcome::Failed;
    }
    EvalResults addresses;
    if (!context.getIntRegAddress(reg, addresses) || addresses.isEmpty()) {
        context.fail(QStringLiteral("getIntRegAddress  failed:%1").arg(name));
        return Outcome::Failed;
    }
    Reading reading(context, reg, converter, length);
    if (reading.isConverted()) {
        if (!reading.converter().prepare()) {
            return Outcome::Failed;
        }
        reading.converter().isComplete();
        if (reading.wordCount() > 1) {
            context.addRemark(
                name, FeatureFileReason::FurtherWords,
                QStringLiteral("only the first of %1 words is kept").arg(reading.wordCount()));
        }
    }
    *text = FeatureFileWriter::complexBegin(name, length, ElementWalk::name(reg));
    for (int index = 0; index < addresses.size(); ++index) {
        if (!appendLine(reading, addresses.at(index), index, text)) {
            return Outcome::Failed;
        }
        // Long registers at many addresses would take all memory.
        if (text->size() > context.limits().dump) {
            context.fail(QStringLiteral("%1: its registers are larger than a file").arg(name));
            return Outcome::Failed;
        }
    }
    *text += FeatureFileWriter::complexEnd();
    return Outcome::Done;
}

QString RegisterDump::readNodeFromRegisters(EvalContext &context, const QString &name,
                                            bool *isNodeValue)
{
    *isNodeValue = false;
    if (!context.task()) {
        return QString();
    }
    context.beginNode(name);
    context.clearSelectors();
    context.collectSelectors(name);
    const QDomElement node = context.node(name);
    QDomElement converter;
    const QDomElement reg = context.findRegElement(node, &converter);
    if (reg.isNull()) {
        EvalResults results;
        const bool succeeded = context.getValue(node, results);
        context.fail(QStringLiteral("Reg is empty failed:%1").arg(name));
        return succeeded && results.size() > 1
            ? QString::number(static_cast<double>(results.first().value), 'f', DECIMALS)
            : QString();
    }
    qint64 length = 0;
    if (context.registerLength(reg, &length) != EvalContext::Length::Known) {
        return QString();
    }
    EvalResults addresses;
    if (!context.getIntRegAddress(reg, addresses) || addresses.size() != 1) {
        context.fail(QStringLiteral("getIntRegAddress  failed:%1").arg(name));
        return QString();
    }
    Reading reading(context, reg, converter, length);
    if (reading.isConverted()
        && (!reading.converter().prepare() || !reading.converter().isComplete())) {
        return QString();
    }
    if (!reading.readAt(addresses.first())) {
        return QString();
    }
    if (reading.isConverted()) {
        QString from;
        double value = 0.0;
        const bool done = reading.converter().formulaAt(0, &from)
            && reading.converter().valueOf(from, reading.firstWord(), &value);
        *isNodeValue = done && reading.isNumber();
        return done ? QString::number(value, 'f', DECIMALS) : QString();
    }
    *isNodeValue = reading.isNumber();
    return reading.words();
}
