#include "host/cd/sample_ring.h"

#include <algorithm>

namespace tessarel::host {

std::size_t SampleRing::push(const std::int16_t* samples, std::size_t count) {
    const std::size_t capacity = values_.size() / 2;
    const std::size_t taken = std::min(count, room());
    const std::size_t back = capacity == 0 ? 0 : (front_ + size_) % capacity;
    const std::size_t untilWrap = std::min(taken, capacity - back);
    std::copy_n(samples, untilWrap * 2, values_.data() + back * 2);
    std::copy_n(samples + untilWrap * 2, (taken - untilWrap) * 2, values_.data());
    size_ += taken;
    return taken;
}

std::size_t SampleRing::pop(std::int16_t* samples, std::size_t count) {
    const std::size_t capacity = values_.size() / 2;
    const std::size_t taken = std::min(count, size_);
    const std::size_t untilWrap = std::min(taken, capacity - front_);
    std::copy_n(values_.data() + front_ * 2, untilWrap * 2, samples);
    std::copy_n(values_.data(), (taken - untilWrap) * 2, samples + untilWrap * 2);
    front_ = capacity == 0 ? 0 : (front_ + taken) % capacity;
    size_ -= taken;
    return taken;
}

}  // namespace tessarel::host
