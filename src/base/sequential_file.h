#pragma once
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tessarel {

/// A value that keeps the form its line had: quoted text, or bare.
struct Variant {
    std::string text;
    bool quoted = true;

    static Variant number(std::int64_t n) { return {std::to_string(n), false}; }
    /// The value as a number, 0 when it is none.
    double asNumber() const;
    bool operator==(const Variant&) const = default;
};

/// Reads values one after another from text that holds one value to a line, text in double quotes, numbers bare.
/// A bare value ends at a comma or a line end; a quoted one runs to its closing quote, line ends included, and to the end
/// of the file when that quote is missing. Each call gives nothing when the file has ended, and from then on.
class SequentialReader {
public:
    explicit SequentialReader(std::string_view text) : rest_(text) {}

    std::optional<std::string> text();
    std::optional<Variant> variant();
    /// A value that is no number reads as 0; one outside the range gives nothing, and so do all calls after it.
    std::optional<std::int16_t> integer();
    std::optional<std::int32_t> longInteger();
    std::optional<float> single();

    /// Read into a field that keeps its value when the file has ended. True when it was read.
    bool into(std::string& field);
    bool into(Variant& field);
    bool into(std::int16_t& field);
    bool into(std::int32_t& field);
    bool into(float& field);

    bool atEnd() const;

private:
    std::optional<double> numberBetween(double low, double high);

    std::string_view rest_;
    bool failed_ = false;
};

/// Builds such a text; every value on a line of its own, closed by CR LF. A text can't hold a double quote: it is written as a
/// single one, so that the values behind it keep their places.
class SequentialWriter {
public:
    SequentialWriter& text(std::string_view value);
    SequentialWriter& number(std::int64_t value);
    SequentialWriter& single(float value);
    SequentialWriter& variant(const Variant& value);
    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

}  // namespace tessarel
