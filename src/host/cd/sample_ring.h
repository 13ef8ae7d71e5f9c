#pragma once
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tessarel::host {

/// A queue of stereo samples with a fixed capacity. Counts are stereo samples: two values each. Not synchronised.
class SampleRing {
public:
    explicit SampleRing(std::size_t capacity) : values_(capacity * 2) {}

    std::size_t size() const { return size_; }
    std::size_t room() const { return values_.size() / 2 - size_; }
    void clear() { size_ = 0; }

    /// Appends as many as there is room for, and returns how many those were.
    std::size_t push(const std::int16_t* samples, std::size_t count);
    /// Takes at most `count` from the front, and returns how many it took.
    std::size_t pop(std::int16_t* samples, std::size_t count);

private:
    std::vector<std::int16_t> values_;
    std::size_t front_ = 0;
    std::size_t size_ = 0;
};

}  // namespace tessarel::host
