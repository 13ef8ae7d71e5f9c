#include "base/sequential_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/text.h"

namespace tessarel {
namespace {

constexpr char endOfFileMark = '\x1A';

bool isLineEnd(char c) { return c == '\r' || c == '\n'; }

void dropLineEnd(std::string_view& s) {
    if (s.starts_with("\r\n")) {
        s.remove_prefix(2);
    } else if (!s.empty() && isLineEnd(s[0])) {
        s.remove_prefix(1);
    }
}

// The rest of a line behind a value: blanks, then one comma or one line end.
void dropSeparator(std::string_view& s) {
    while (!s.empty() && (s[0] == ' ' || s[0] == '\t')) {
        s.remove_prefix(1);
    }
    if (s.starts_with(',')) {
        s.remove_prefix(1);
    } else {
        dropLineEnd(s);
    }
}

Variant takeQuoted(std::string_view& s) {
    s.remove_prefix(1);
    const auto close = s.find('"');
    Variant value{std::string(s.substr(0, close)), true};
    s.remove_prefix(close == std::string_view::npos ? s.size() : close + 1);
    dropSeparator(s);
    return value;
}

Variant takeBare(std::string_view& s) {
    const auto end = s.find_first_of(",\r\n\x1A");
    Variant value{text::trimRight(s.substr(0, end)), false};
    s.remove_prefix(end == std::string_view::npos ? s.size() : end);
    dropSeparator(s);
    return value;
}

}  // namespace

double Variant::asNumber() const { return text::val(text); }

bool SequentialReader::atEnd() const { return failed_ || rest_.empty() || rest_[0] == endOfFileMark; }

std::optional<Variant> SequentialReader::variant() {
    if (atEnd()) {
        return std::nullopt;
    }
    while (!rest_.empty() && (rest_[0] == ' ' || rest_[0] == '\t')) {
        rest_.remove_prefix(1);
    }
    return rest_.starts_with('"') ? takeQuoted(rest_) : takeBare(rest_);
}

std::optional<std::string> SequentialReader::text() {
    auto value = variant();
    return value ? std::optional(std::move(value->text)) : std::nullopt;
}

std::optional<double> SequentialReader::numberBetween(double low, double high) {
    const auto value = variant();
    if (!value) {
        return std::nullopt;
    }
    const double number = value->asNumber();
    failed_ = number < low || number > high;
    return failed_ ? std::nullopt : std::optional(number);
}

std::optional<std::int16_t> SequentialReader::integer() {
    const auto n = numberBetween(-32768.5, 32767.49);
    return n ? std::optional(static_cast<std::int16_t>(std::nearbyint(*n))) : std::nullopt;
}

std::optional<std::int32_t> SequentialReader::longInteger() {
    const auto n = numberBetween(-2147483648.5, 2147483647.49);
    return n ? std::optional(static_cast<std::int32_t>(std::nearbyint(*n))) : std::nullopt;
}

std::optional<float> SequentialReader::single() {
    const auto n = numberBetween(-3.4e38, 3.4e38);
    return n ? std::optional(static_cast<float>(*n)) : std::nullopt;
}

namespace {
template <class T>
bool store(T& field, std::optional<T> value) {
    if (value) {
        field = std::move(*value);
    }
    return value.has_value();
}
}  // namespace

bool SequentialReader::into(std::string& field) { return store(field, text()); }
bool SequentialReader::into(Variant& field) { return store(field, variant()); }
bool SequentialReader::into(std::int16_t& field) { return store(field, integer()); }
bool SequentialReader::into(std::int32_t& field) { return store(field, longInteger()); }
bool SequentialReader::into(float& field) { return store(field, single()); }

SequentialWriter& SequentialWriter::text(std::string_view value) {
    bytes_ += '"';
    std::transform(value.begin(), value.end(), std::back_inserter(bytes_), [](char c) { return c == '"' ? '\'' : c; });
    bytes_ += "\"\r\n";
    return *this;
}

SequentialWriter& SequentialWriter::number(std::int64_t value) {
    bytes_ += fmt::format("{}\r\n", value);
    return *this;
}

SequentialWriter& SequentialWriter::single(float value) {
    // A whole number stands without a point and a fraction without its leading zero, as ".5".
    auto digits = fmt::format("{}", value);
    if (digits.ends_with(".0")) {
        digits.resize(digits.size() - 2);
    }
    if (digits.starts_with("0.")) {
        digits.erase(0, 1);
    } else if (digits.starts_with("-0.")) {
        digits.erase(1, 1);
    }
    bytes_ += digits + "\r\n";
    return *this;
}

SequentialWriter& SequentialWriter::variant(const Variant& value) {
    if (value.quoted) {
        return text(value.text);
    }
    bytes_ += value.text + "\r\n";
    return *this;
}

}  // namespace tessarel
