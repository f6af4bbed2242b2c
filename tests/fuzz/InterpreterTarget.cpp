#include "FeatureFileChecks.h"
#include "FuzzTarget.h"
#include "featurefile/FeatureFileFormat.h"
#include "featurefile/FeatureFileWriter.h"
#include "featurefile/RegisterDump.h"

#include <QDomDocument>

namespace {

/// Every node is asked for everything; more of them only make the fuzzer slow.
constexpr int MAX_NODES = 24;
/// Failures have a limit of their own, which leaves some for what is remarked.
constexpr int MAX_LINES_A_NODE = 200;

bool hasAddresses(const QString &dump)
{
    const QString begin = QStringLiteral("<RegValue address=\"");
    int count = 0;
    for (int at = dump.indexOf(begin); at >= 0; at = dump.indexOf(begin, at + 1), ++count) {
        const int number = at + begin.size();
        bool ok = false;
        const qlonglong address =
            dump.mid(number, dump.indexOf(QLatin1Char('"'), number) - number).toLongLong(&ok);
        if (!ok || address < 0 || address >= FuzzDevice::MEMORY_END) {
            return false;
        }
    }
    return count > 0;
}

/// Runs one question about a node and checks what it cost.
template<typename Ask>
void limited(FuzzJob &fuzz, EvalContext &context, const QString &name, Ask ask)
{
    context.beginNode(name);
    context.clearSelectors();
    context.collectSelectors(name);
    FuzzJob::takeLines();
    const int before = fuzz.device().accesses();
    ask();
    require(fuzz.device().accesses() - before <= fuzz.job().limits.visits, "a node has its limit");
    require(FuzzJob::takeLines() <= MAX_LINES_A_NODE, "a node does not fill the log");
}

void askEverything(FuzzJob &fuzz, EvalContext &context, const QString &name)
{
    const QDomElement element = context.node(name);
    const auto isBounded = [&fuzz](const EvalResults &results) {
        return results.size() <= fuzz.job().limits.combinations;
    };
    for (const auto ask : {&EvalContext::getValue, &EvalContext::getIntValue}) {
        limited(fuzz, context, name, [&] {
            EvalResults values;
            (context.*ask)(element, values);
            require(isBounded(values), "values have a limit");
        });
    }
    limited(fuzz, context, name, [&] {
        QDomElement converter;
        const QDomElement reg = context.findRegElement(element, &converter);
        qint64 length = 0;
        if (!reg.isNull() && context.registerLength(reg, &length) == EvalContext::Length::Known) {
            require(length >= 1 && length <= FeatureFileFormat::MAX_REGISTER_LENGTH,
                    "a register has a length");
        }
        EvalResults addresses;
        if (!reg.isNull() && context.getIntRegAddress(reg, addresses)) {
            require(isBounded(addresses) && !addresses.isEmpty(), "a register has addresses");
        }
    });
    limited(fuzz, context, name, [&] {
        QString text;
        const RegisterDump::Outcome outcome = RegisterDump::write(context, name, &text);
        require(outcome != RegisterDump::Outcome::Done || hasAddresses(text),
                "a dump has the device's own addresses");
        require(outcome != RegisterDump::Outcome::Done
                    || text.size()
                        <= fuzz.job().limits.dump + FeatureFileWriter::complexEnd().size(),
                "a dump has a limit");
    });
    limited(fuzz, context, name, [&] {
        bool isNodeValue = false;
        const QString text = RegisterDump::readNodeFromRegisters(context, name, &isNodeValue);
        require(!isNodeValue || !text.isEmpty(), "a value has a text");
    });
}

} // namespace

/// Takes any bytes as the nodes of a description, asks the interpreter everything about each of them, and exports and
/// compares the device of that description. "StopAt" of the root stops the job at that access.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool s_prepared = (FuzzJob::prepareProcess(), true);
    Q_UNUSED(s_prepared)
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QDomDocument document;
    if (bytes.contains("<!") || !document.setContent(bytes)) {
        return 0;
    }
    FuzzJob fuzz(document);
    FeatureJob &job = fuzz.job();
    EvalContext context(job.nodes, job.selectedLinks, fuzz.device().task(), job.isGigE(), job.pStop,
                        job.limits);
    // A fuzzer asks one node, and exports only now and then.
    constexpr uint ONE_OF = 8;
    const uint hash = CHECK_EVERYTHING ? 0 : qHash(bytes);
    const QStringList names = job.nodes.keys().mid(0, MAX_NODES);
    for (int index = 0; index < names.size(); ++index) {
        if (CHECK_EVERYTHING || hash / ONE_OF % static_cast<uint>(names.size()) == uint(index)) {
            askEverything(fuzz, context, names.at(index));
        }
    }
    if (hash % ONE_OF != 0) {
        return 0;
    }

    bool stops = false;
    const int at = document.documentElement().attribute(QStringLiteral("StopAt")).toInt(&stops);
    FuzzJob whole(document);
    if (stops) {
        whole.device().stopAt(at, &whole.stop());
    }
    FeatureFileChecks::exportAll(whole);
    return 0;
}
