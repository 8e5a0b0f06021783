#pragma once

#include <QString>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace plotwell::soak {

// One thing a user does, kept as data so that a run can be written down,
// replayed and cut short: the name of its kind (see stepkinds.h) and its
// parameters, numbers and texts, which only the kind gives a meaning.
struct Step {
    std::string kind;
    std::vector<double> numbers;
    std::vector<QString> texts;
    // Runs inside the step before it, while that one lets pending events run
    // (the fit and the wheel do); right after it when it lets none run.
    bool nested = false;

    double number(std::size_t i) const { return i < numbers.size() ? numbers[i] : 0; }
    int whole(std::size_t i) const { return int(number(i)); }
    float single(std::size_t i) const { return float(number(i)); }
    QString text(std::size_t i) const { return i < texts.size() ? texts[i] : QString(); }
};

// One line of text per step, exact for every number and every text (line
// breaks, lone surrogates and all): an optional ">" for a nested step, the
// kind, the numbers, then the texts in double quotes with \uXXXX escapes for
// everything that is not plain printable ASCII.
std::string stepLine(const Step& step);
std::optional<Step> parseStepLine(std::string_view line);

// A text shortened for people to read, with its escapes, at most max code units.
std::string shortText(const QString& text, int max = 60);

} // namespace plotwell::soak
