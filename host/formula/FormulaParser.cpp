#include "host/formula/FormulaParser.h"

#include <QVarLengthArray>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstring>

namespace {

struct Operator
{
    const char *text;
    int level; ///< the higher, the tighter
    FormulaStep step;
};

constexpr int LEVEL_OR = 0;
constexpr int LEVEL_AND = 1;

/// A text before those that it begins with. The first two evaluate their right side only when it counts.
const Operator OPERATORS[] = {
    {"||", LEVEL_OR, FormulaStep::Truth},   {"&&", LEVEL_AND, FormulaStep::Truth},
    {"==", 5, FormulaStep::Equal},          {"!=", 5, FormulaStep::NotEqual},
    {"<>", 5, FormulaStep::NotEqual},       {"<=", 6, FormulaStep::LessOrEqual},
    {">=", 6, FormulaStep::GreaterOrEqual}, {"<<", 7, FormulaStep::ShiftLeft},
    {">>", 7, FormulaStep::ShiftRight},     {"|", 2, FormulaStep::BitOr},
    {"^", 3, FormulaStep::BitXor},          {"&", 4, FormulaStep::BitAnd},
    {"=", 5, FormulaStep::Equal},           {"<", 6, FormulaStep::Less},
    {">", 6, FormulaStep::Greater},         {"+", 8, FormulaStep::Add},
    {"-", 8, FormulaStep::Subtract},        {"*", 9, FormulaStep::Multiply},
    {"/", 9, FormulaStep::Divide},          {"%", 9, FormulaStep::Remainder},
};

struct Function
{
    const char *name;
    FormulaStep step;
};

/// Of one argument; ROUND may have a second one, the digits behind the point.
const Function FUNCTIONS[] = {
    {"SGN", FormulaStep::Sgn},     {"NEG", FormulaStep::Negate}, {"ATAN", FormulaStep::Atan},
    {"COS", FormulaStep::Cos},     {"SIN", FormulaStep::Sin},    {"TAN", FormulaStep::Tan},
    {"ABS", FormulaStep::Abs},     {"EXP", FormulaStep::Exp},    {"LN", FormulaStep::Ln},
    {"LG", FormulaStep::Lg},       {"SQRT", FormulaStep::Sqrt},  {"TRUNC", FormulaStep::Trunc},
    {"FLOOR", FormulaStep::Floor}, {"CEIL", FormulaStep::Ceil},  {"CELL", FormulaStep::Ceil},
    {"ROUND", FormulaStep::Round}, {"ASIN", FormulaStep::Asin},  {"ACOS", FormulaStep::Acos},
};

struct Constant
{
    const char *name;
    double value;
};

const Constant CONSTANTS[] = {{"E", 2.71828182845904523536}, {"PI", 3.14159265358979323846}};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}
bool beginsWord(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}
bool isWord(char c)
{
    return beginsWord(c) || isDigit(c) || c == '.';
}
bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// What a step adds to the height of the stack.
int heightOf(FormulaStep step)
{
    if (step == FormulaStep::Literal || step == FormulaStep::Name) {
        return 1;
    }
    return step == FormulaStep::JumpIfFalse || step >= FormulaStep::RoundTo ? -1 : 0;
}

} // namespace

FormulaParser::FormulaParser(const QByteArray &text, const QVector<QByteArray> &variables)
    : m_text(text)
    , m_variables(variables)
{
}

bool FormulaParser::parse(FormulaProgram *program, QByteArray *reason)
{
    m_pProgram = program;
    skipBlanks();
    if (m_text.size() > MAX_LENGTH) {
        m_reason = "the formula is longer than " + QByteArray::number(MAX_LENGTH) + " bytes";
    } else if (m_nAt >= m_text.size()) {
        m_reason = "the formula is empty";
    } else if (conditional() && m_nAt < m_text.size()) {
        fail("an operator is missing");
    }
    *reason = m_reason;
    return m_reason.isEmpty();
}

bool FormulaParser::fail(const QByteArray &reason)
{
    m_reason = "column " + QByteArray::number(m_nAt + 1) + ": " + reason;
    return false;
}

void FormulaParser::skipBlanks()
{
    while (m_nAt < m_text.size() && isBlank(m_text.at(m_nAt))) {
        ++m_nAt;
    }
}

bool FormulaParser::take(const char *text)
{
    const int length = static_cast<int>(std::strlen(text));
    if (length > m_text.size() - m_nAt
        || std::memcmp(m_text.constData() + m_nAt, text, static_cast<std::size_t>(length)) != 0) {
        return false;
    }
    m_nAt += length;
    skipBlanks();
    return true;
}

bool FormulaParser::enter()
{
    return ++m_nDepth <= MAX_DEPTH
        || fail("the formula is nested deeper than " + QByteArray::number(MAX_DEPTH));
}

/// A chain "a ? b : c ? d : e" is a loop, so that a long list of cases does not count as deep.
bool FormulaParser::conditional()
{
    if (!enter()) {
        return false;
    }
    QVarLengthArray<int, 16> ends;
    for (;;) {
        if (!binary(LEVEL_OR)) {
            return false;
        }
        if (!take("?")) {
            break;
        }
        const int otherwise = emitJump(FormulaStep::JumpIfFalse);
        if (!countOperator() || !conditional()) {
            return false;
        }
        if (!take(":")) {
            return fail("\":\" is missing");
        }
        ends.append(emitJump(FormulaStep::Jump));
        --m_nStack;
        land(otherwise);
    }
    for (const int end : ends) {
        land(end);
    }
    --m_nDepth;
    return true;
}

bool FormulaParser::binary(int level)
{
    if (!power()) {
        return false;
    }
    for (;;) {
        const int begin = m_nAt;
        const auto *const found =
            std::find_if(std::begin(OPERATORS), std::end(OPERATORS),
                         [this](const Operator &entry) { return take(entry.text); });
        if (found == std::end(OPERATORS)) {
            return true;
        }
        if (found->level < level) {
            m_nAt = begin;
            return true;
        }
        if (!countOperator()
            || !(found->level <= LEVEL_AND ? lazy(found->level) : binary(found->level + 1))) {
            return false;
        }
        if (found->level > LEVEL_AND) {
            emitStep(found->step);
        }
    }
}

/// The right side of && or ||; the left one is on the stack.
bool FormulaParser::lazy(int level)
{
    const bool isOr = level == LEVEL_OR;
    const FormulaNumber decided = FormulaNumber::ofInteger(isOr ? 1 : 0);
    const int onFalse = emitJump(FormulaStep::JumpIfFalse);
    int end = 0;
    if (isOr) {
        emitLiteral(decided, decided);
        end = emitJump(FormulaStep::Jump);
        --m_nStack;
        land(onFalse);
    }
    if (!binary(level + 1)) {
        return false;
    }
    emitStep(FormulaStep::Truth);
    if (!isOr) {
        end = emitJump(FormulaStep::Jump);
        --m_nStack;
        land(onFalse);
        emitLiteral(decided, decided);
    }
    land(end);
    return true;
}

bool FormulaParser::power()
{
    if (!unary()) {
        return false;
    }
    if (!take("**")) {
        return true;
    }
    if (!countOperator() || !enter() || !power()) {
        return false;
    }
    --m_nDepth;
    emitStep(FormulaStep::Power);
    return true;
}

bool FormulaParser::unary()
{
    struct Sign
    {
        const char *text;
        FormulaStep step;
    };
    static const Sign SIGNS[] = {{"-", FormulaStep::Negate},
                                 {"~", FormulaStep::Complement},
                                 {"!", FormulaStep::Not},
                                 {"+", FormulaStep::Jump}};
    for (const Sign &sign : SIGNS) {
        if (take(sign.text)) {
            if (!countOperator() || !enter() || !unary()) {
                return false;
            }
            --m_nDepth;
            if (sign.step != FormulaStep::Jump) {
                emitStep(sign.step);
            }
            return true;
        }
    }
    return primary();
}

bool FormulaParser::primary()
{
    if (m_nAt >= m_text.size()) {
        return fail("a number or a name is missing at the end");
    }
    if (take("(")) {
        return conditional() && (take(")") || fail("\")\" is missing"));
    }
    const char first = m_text.at(m_nAt);
    if (isDigit(first) || first == '.') {
        return literal();
    }
    return beginsWord(first) ? word() : fail("a number or a name is missing");
}

bool FormulaParser::literal()
{
    const bool isHexadecimal = m_text.at(m_nAt) == '0' && m_nAt + 1 < m_text.size()
        && (m_text.at(m_nAt + 1) == 'x' || m_text.at(m_nAt + 1) == 'X');
    if (!(isHexadecimal ? hexadecimal() : decimal())) {
        return false;
    }
    if (m_nAt < m_text.size() && isWord(m_text.at(m_nAt))) {
        return fail("a number runs into a name");
    }
    skipBlanks();
    return true;
}

bool FormulaParser::hexadecimal()
{
    const int begin = m_nAt;
    int end = begin + 2;
    while (end < m_text.size() && std::isxdigit(static_cast<unsigned char>(m_text.at(end)))) {
        ++end;
    }
    bool ok = false;
    const quint64 bits = m_text.mid(begin + 2, end - begin - 2).toULongLong(&ok, 16);
    if (!ok) {
        return fail(end == begin + 2 ? "a hexadecimal number has no digits"
                                     : "a number does not fit into 64 bits");
    }
    m_nAt = end;
    const FormulaNumber number = FormulaNumber::ofInteger(static_cast<qint64>(bits));
    emitInteger(bits, number);
    return true;
}

bool FormulaParser::decimal()
{
    const int begin = m_nAt;
    int end = begin;
    const auto skipDigits = [this, &end] {
        while (end < m_text.size() && isDigit(m_text.at(end))) {
            ++end;
        }
    };
    skipDigits();
    bool isWhole = true;
    if (end < m_text.size() && m_text.at(end) == '.') {
        isWhole = false;
        ++end;
        skipDigits();
    }
    if (end < m_text.size() && (m_text.at(end) == 'e' || m_text.at(end) == 'E')) {
        const int mantissa = end;
        ++end;
        end += end < m_text.size() && (m_text.at(end) == '+' || m_text.at(end) == '-') ? 1 : 0;
        const int digits = end;
        skipDigits();
        isWhole = isWhole && end == digits;
        end = end == digits ? mantissa : end;
    }
    const QByteArray text = m_text.mid(begin, end - begin);
    bool ok = false;
    const double real = text.toDouble(&ok);
    if (!isWhole && (!ok || !std::isfinite(real))) {
        return fail(text == "." ? "a number has no digits" : "a number is too large");
    }
    if (!isWhole) {
        emitLiteral(FormulaNumber::ofReal(real), FormulaNumber::ofReal(real));
    } else {
        const quint64 bits = text.toULongLong(&ok, 10);
        if (!ok) {
            return fail("a number does not fit into 64 bits");
        }
        const FormulaNumber integer = FormulaNumber::ofInteger(static_cast<qint64>(bits));
        emitInteger(bits, integer.integer < 0 ? FormulaNumber::ofReal(real) : integer);
    }
    m_nAt = end;
    return true;
}

bool FormulaParser::word()
{
    const int begin = m_nAt;
    while (m_nAt < m_text.size() && isWord(m_text.at(m_nAt))) {
        ++m_nAt;
    }
    const QByteArray name = m_text.mid(begin, m_nAt - begin);
    skipBlanks();
    const bool isCalled = m_nAt < m_text.size() && m_text.at(m_nAt) == '(';
    const auto *const constant =
        std::find_if(std::begin(CONSTANTS), std::end(CONSTANTS),
                     [&name](const Constant &entry) { return name == entry.name; });
    if (constant != std::end(CONSTANTS) && (isCalled || !m_variables.contains(name))) {
        if (take("(") && !take(")")) {
            return fail("\")\" is missing");
        }
        const FormulaNumber value = FormulaNumber::ofReal(constant->value);
        emitLiteral(value, value);
        return true;
    }
    if (isCalled) {
        return call(name, begin);
    }
    int index = m_pProgram->names.indexOf(name);
    if (index < 0) {
        index = m_pProgram->names.size();
        m_pProgram->names.append(name);
    }
    emitStep(FormulaStep::Name, index);
    return true;
}

bool FormulaParser::call(const QByteArray &name, int begin)
{
    const QByteArray upper = name.toUpper();
    const auto *const function =
        std::find_if(std::begin(FUNCTIONS), std::end(FUNCTIONS),
                     [&upper](const Function &entry) { return upper == entry.name; });
    if (function == std::end(FUNCTIONS)) {
        m_nAt = begin;
        return fail("there is no function " + name);
    }
    if (!countOperator() || !take("(") || !conditional()) {
        return false;
    }
    FormulaStep step = function->step;
    if (step == FormulaStep::Round && take(",")) {
        if (!conditional()) {
            return false;
        }
        step = FormulaStep::RoundTo;
    }
    if (!take(")")) {
        return fail("\")\" is missing");
    }
    emitStep(step);
    return true;
}

bool FormulaParser::countOperator()
{
    return ++m_nOperators <= MAX_OPERATORS
        || fail("the formula has more than " + QByteArray::number(MAX_OPERATORS) + " operators");
}

void FormulaParser::emitStep(FormulaStep step, int argument)
{
    m_pProgram->steps.append({step, argument});
    m_nStack += heightOf(step);
    m_pProgram->stackSize = qMax(m_pProgram->stackSize, m_nStack);
}

void FormulaParser::emitLiteral(const FormulaNumber &integral, const FormulaNumber &real)
{
    emitStep(FormulaStep::Literal, m_pProgram->literals.size());
    m_pProgram->literals.append({integral, real});
}

void FormulaParser::emitInteger(quint64 bits, const FormulaNumber &real)
{
    // Compared as doubles below 2^64 only: at 2^64 the way back would be undefined.
    const double rounded = static_cast<double>(bits);
    if (rounded >= 18446744073709551616.0 || static_cast<quint64>(rounded) != bits) {
        m_pProgram->hasInexactInteger = true;
    }
    emitLiteral(FormulaNumber::ofInteger(static_cast<qint64>(bits)), real);
}

int FormulaParser::emitJump(FormulaStep step)
{
    emitStep(step);
    return m_pProgram->steps.size() - 1;
}

void FormulaParser::land(int jump)
{
    m_pProgram->steps[jump].argument = m_pProgram->steps.size();
}
