#pragma once

#include "featurefile/EvalResult.h"
#include "featurefile/FeatureFileFormat.h"
#include "model/FeatureFileValues.h"

#include <QDomElement>
#include <QHash>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVector>

#include <atomic>

class QCameraTask;
class RegisterBuffer;

/// A pSelected of the description: `selector` chooses what `selected` shows.
struct SelectedLink
{
    QString selector;
    QString selected;
};

/// How much work one node may take. It does not depend on time, so that a description ends the same way everywhere.
struct EvalLimits
{
    int depth = 128;
    int visits = 100000; ///< nodes looked at and registers read
    int combinations = 65536;
    qint64 dump = FeatureFileFormat::MAX_FILE_SIZE; ///< characters of all registers
};

/// A small interpreter of device descriptions (GenICam Integer, Enumeration, IntSwissKnife, Converter and registers):
/// which register backs a node, how long it is and where it lies for each value of its selectors. It tells failures
/// in the log and goes on; descriptions come from outside, so that its work for one node is limited. It lives on one
/// thread, for one export or for one reading.
///
/// All numbers pass through single precision and six digits; remarks() names the nodes that lose bits there.
class EvalContext
{
public:
    using ElementMap = QMap<QString, QDomElement>;

    static constexpr int MAX_FORMULA = 65536; ///< characters

    /// `task` may be null: everything that asks the device fails then. Whoever sets `stop` ends all work early.
    EvalContext(const ElementMap &nodes, const QVector<SelectedLink> &selectedLinks,
                QCameraTask *task, bool isGigE, const std::atomic<bool> *stop,
                const EvalLimits &limits = EvalLimits());

    /// From here on the work is done for this feature; the limits count anew.
    void beginNode(const QString &feature);
    void clearSelectors() { m_selectorMap.clear(); }
    /// Enters the selectors of a feature; whether it has one.
    bool collectSelectors(const QString &name);
    /// The register under a node, null when there is none; `converter` gets the converter on the way to it.
    QDomElement findRegElement(const QDomElement &node, QDomElement *converter);
    bool getValue(const QDomElement &node, EvalResults &out);
    bool getIntValue(const QDomElement &node, EvalResults &out);
    /// Every address of a register, one for each combination of its selectors' values.
    bool getIntRegAddress(const QDomElement &reg, EvalResults &out);

    enum class Length { Known, Zero, Unknown };
    /// Length of a register in bytes. `quiet` leaves out the line for a pLength without a length.
    Length registerLength(const QDomElement &reg, qint64 *length, bool quiet = false);
    /// Reads a register at one of its addresses into a prepared buffer. An address that is not a multiple of 4, and
    /// that the device refuses, is read in two aligned steps.
    bool readRegister(const QDomElement &reg, const _FORMULA_RESULT_ &address, qint64 length,
                      RegisterBuffer &buffer);
    /// An address as files carry it; reads and writes go there, whatever was meant.
    static QString addressText(const _FORMULA_RESULT_ &address);
    /// A variable's number as it is put into a formula; told of when it is not the number meant.
    QString variableText(const QString &node, const _FORMULA_RESULT_ &result);
    /// Puts a text in a variable's place. False, logged, for a formula that has grown too long: a variable may be part of
    /// another's number.
    bool substitute(const QString &variable, const QString &text, QString *formula);
    /// Works a formula out; a failure is logged with the text.
    bool compute(const QString &owner, const QString &formula, double *value);

    QDomElement node(const QString &name) const;
    /// The selectors that the link list names for a feature.
    QStringList selectorsOf(const QString &name) const;
    QCameraTask *task() const { return m_pTask; }
    bool isGigE() const { return m_bGigE; }
    const EvalLimits &limits() const { return m_limits; }
    bool isStopped() const;
    const QList<FeatureFileNote> &remarks() const { return m_remarks; }
    void addRemark(const QString &name, FeatureFileReason reason, const QString &detail);
    /// Logs and answers false.
    bool fail(const QString &text);

    /// Whether the text is a number; a node of that name goes before. Blanks around it do not count.
    bool isNumber(const QString &text, qint64 *number) const;
    /// False for a text that is no number, or none of 64 bits: taken as 0 it would be another register's address.
    static bool parseNumber(const QString &text, qint64 *number);

private:
    struct Expansion;
    class Visit;

    void restoreHiddenNodes();
    bool getSwissKnifeValue(const QDomElement &node, EvalResults &out);
    bool getEnumerationEntries(const QString &name, EvalResults &out);
    bool appendRange(const QString &name, EvalResults &out);
    bool getBitField(const QDomElement &node, EvalResults &out);
    bool getRegisterWords(const QDomElement &reg, EvalResults &out);
    bool getReferredValue(const QDomElement &node, EvalResults &out);
    bool getConstant(const QDomElement &node, const QDomElement &value, EvalResults &out);
    bool getSelectorValues(const QDomElement &selector, const QString &name, EvalResults &out);
    bool addressParts(const QDomElement &reg, QVector<EvalResults> &parts);
    bool isOnDevicePort(const QDomElement &reg);
    void expandFormula(Expansion &expansion, const QString &formula, const QString &variables,
                       int depth);
    bool readMemory(qint64 address, void *buffer, qint64 length);
    bool countVisit();
    bool countCombinations(qint64 count);

    const ElementMap m_nodes;
    ElementMap
        m_addedNodes; ///< go before m_nodes; StructRegs, under the name of their entry and "_"
    QVector<SelectedLink> m_selectedLinks;
    QHash<QString, QVector<int>> m_linksOf; ///< by the selected name
    ElementMap m_selectorMap;
    QCameraTask *m_pTask;
    bool m_bGigE;
    const std::atomic<bool> *m_pStop;
    const EvalLimits m_limits;

    QString m_strFeature;
    int m_nDepth = 0;
    int m_nVisits = 0;
    qint64 m_nCombinations = 0;
    int m_nFailures = 0;
    bool m_bLimitTold = false;
    QList<FeatureFileNote> m_remarks;
    QSet<QString> m_toldRemarks;
};
