#include "host/utilitykit/FormulaGuard.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace {

constexpr int MAX_LENGTH = 16 * 1024;
constexpr int MAX_DEPTH = 64;
/// Remainders in one formula; each is looked at by evaluating its two sides.
constexpr std::size_t MAX_REMAINDERS = 64;
constexpr double SMALLEST_INTEGER = double(std::numeric_limits<qint64>::min());

struct Token
{
    enum Kind { OPERAND, OPERATOR, OPEN, CLOSE };
    Kind kind;
    int begin;
    int end;
    int depth;
    char first;
};

bool isWordCharacter(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_'
        || c == '.';
}

bool isExponentSign(const QByteArray &formula, int begin, int at)
{
    const char digit = formula.at(begin);
    const char before = formula.at(at - 1);
    const bool number = (digit >= '0' && digit <= '9') || digit == '.';
    const bool hexadecimal = formula.mid(begin, 2).toLower() == "0x";
    return number && !hexadecimal && (before == 'e' || before == 'E')
        && (formula.at(at) == '+' || formula.at(at) == '-');
}

std::vector<Token> tokens(const QByteArray &formula)
{
    std::vector<Token> found;
    int depth = 0;
    for (int at = 0; at < formula.size();) {
        const char c = formula.at(at);
        const int begin = at++;
        if (c == ' ' || c == '\t' || c == '\n' || c == '\r') {
            continue;
        }
        Token::Kind kind = Token::OPERATOR;
        if (c == '(') {
            kind = Token::OPEN;
            ++depth;
        } else if (c == ')') {
            kind = Token::CLOSE;
        } else if (isWordCharacter(c)) {
            kind = Token::OPERAND;
            while (at < formula.size()
                   && (isWordCharacter(formula.at(at)) || isExponentSign(formula, begin, at))) {
                ++at;
            }
        } else if (c == '*' && at < formula.size() && formula.at(at) == '*') {
            ++at;
        }
        found.push_back({kind, begin, at, depth, c});
        depth -= kind == Token::CLOSE ? 1 : 0;
    }
    return found;
}

bool isUnary(const std::vector<Token> &all, int index)
{
    const char c = all[std::size_t(index)].first;
    if (c == '~' || c == '!') {
        return true;
    }
    const bool afterOperand = index > 0
        && (all[std::size_t(index) - 1].kind == Token::OPERAND
            || all[std::size_t(index) - 1].kind == Token::CLOSE);
    return (c == '-' || c == '+') && !afterOperand;
}

/// First token of the product that ends before `index`.
int leftBegin(const std::vector<Token> &all, int index)
{
    const int depth = all[std::size_t(index)].depth;
    int begin = index;
    while (begin > 0) {
        const Token &token = all[std::size_t(begin) - 1];
        const bool inside = token.depth > depth || token.kind == Token::OPERAND;
        const bool joins = token.kind == Token::OPERATOR
            && (token.first == '*' || token.first == '/' || token.first == '%'
                || isUnary(all, begin - 1));
        if (!inside && !joins) {
            break;
        }
        --begin;
    }
    return begin;
}

/// One behind the last token of the factor that begins after `index`.
int rightEnd(const std::vector<Token> &all, int index)
{
    const int depth = all[std::size_t(index)].depth;
    const int count = int(all.size());
    int end = index + 1;
    while (end < count) {
        const Token &token = all[std::size_t(end)];
        const bool inside = token.depth > depth || token.kind == Token::OPERAND;
        const bool power = token.first == '*' && token.end - token.begin == 2;
        if (!inside && !(token.kind == Token::OPERATOR && (power || isUnary(all, end)))) {
            break;
        }
        ++end;
    }
    return end;
}

/// The evaluator reads integers by way of a double: one that a double cannot hold would silently be another number.
bool isInexactInteger(const QByteArray &operand)
{
    const bool hexadecimal = operand.left(2).toLower() == "0x";
    const bool decimal =
        std::all_of(operand.cbegin(), operand.cend(), [](char c) { return c >= '0' && c <= '9'; });
    if (!hexadecimal && !decimal) {
        return false;
    }
    constexpr quint64 LARGEST = quint64(1) << 63;
    bool fits = false;
    const quint64 number = operand.toULongLong(&fits, hexadecimal ? 16 : 10);
    return !fits || number > LARGEST || quint64(double(number)) != number;
}

QByteArray textOf(const QByteArray &formula, const std::vector<Token> &all, int begin, int end)
{
    if (begin >= end) {
        return QByteArray();
    }
    const int from = all[std::size_t(begin)].begin;
    return formula.mid(from, all[std::size_t(end) - 1].end - from);
}

} // namespace

QByteArray FormulaGuard::refusal(const QByteArray &formula, EvaluatePart evaluate)
{
    if (formula.trimmed().isEmpty()) {
        return QByteArrayLiteral("the formula is empty");
    }
    if (formula.size() > MAX_LENGTH) {
        return QByteArrayLiteral("the formula is too long");
    }
    const std::vector<Token> all = tokens(formula);
    std::vector<int> remainders;
    for (int index = 0; index < int(all.size()); ++index) {
        if (all[std::size_t(index)].depth > MAX_DEPTH) {
            return QByteArrayLiteral("the formula is nested too deeply");
        }
        const Token &token = all[std::size_t(index)];
        if (token.kind == Token::OPERAND
            && isInexactInteger(formula.mid(token.begin, token.end - token.begin))) {
            return QByteArrayLiteral("a number of the formula is too large");
        }
        if (token.first == '%') {
            remainders.push_back(index);
        }
    }
    if (remainders.size() > MAX_REMAINDERS) {
        return QByteArrayLiteral("the formula has too many remainders");
    }
    // The remainder of the smallest integer by -1 traps in the processor. Innermost first, so that the sides that
    // are evaluated here hold only remainders that have been looked at.
    std::stable_sort(remainders.begin(), remainders.end(), [&all](int a, int b) {
        return all[std::size_t(a)].depth > all[std::size_t(b)].depth;
    });
    for (const int index : remainders) {
        double dividend = 0.0;
        double divisor = 0.0;
        if (evaluate(textOf(formula, all, index + 1, rightEnd(all, index)), divisor)
            && divisor == -1.0
            && evaluate(textOf(formula, all, leftBegin(all, index), index), dividend)
            && dividend == SMALLEST_INTEGER) {
            return QByteArrayLiteral("the remainder is out of range");
        }
    }
    return QByteArray();
}
