#pragma once

#include <QString>

#include <optional>

namespace tessary::Calculator {

// The launcher's gate: a value only for text that looks like a calculation
// (it holds an operator or a non-leading minus) and evaluates. "42", "-5" and
// "pi" alone are not calculations.
std::optional<double> forLauncher(const QString &text);

// Evaluates arithmetic: + - * × / ÷, postfix %, right-associative ^, the
// constants pi π e tau and the functions sqrt sin cos tan asin acos atan ln log
// log2 exp abs round floor ceil. Absent on any error, including division by
// zero, a domain error, a non-finite result and input of 200 or more
// characters. Never crashes or hangs, whatever the input.
std::optional<double> evaluate(const QString &text);

// Display text: "%.6g" for magnitudes of at least 1e15 or below 1e-9, else the
// en_US decimal form with at most 10 fraction digits; `grouping` switches the
// "," thousands separators.
QString format(double value, bool grouping);

} // namespace tessary::Calculator
