// A part of a record that few records of its kind have: a pointer where it is missing, so that the
// many which go without it stay small.
#pragma once

#include <memory>
#include <utility>

namespace tanrove {

/// Reads as a `Part` with its defaults until it is written; a copy has a part of its own.
template <typename Part>
class Rare {
public:
    Rare() = default;
    Rare(Part part) : part_(std::make_unique<Part>(std::move(part))) {}
    Rare(const Rare& other) : part_(other.part_ ? std::make_unique<Part>(*other.part_) : nullptr) {}
    Rare(Rare&&) noexcept = default;
    Rare& operator=(Rare other) noexcept {
        part_ = std::move(other.part_);
        return *this;
    }
    ~Rare() = default;

    /// True if it was written.
    explicit operator bool() const { return part_ != nullptr; }

    const Part& operator*() const { return part_ ? *part_ : missing; }
    const Part* operator->() const { return &**this; }

    /// The part to write to.
    Part& edit() {
        if (!part_) part_ = std::make_unique<Part>();
        return *part_;
    }

private:
    static inline const Part missing = {};

    std::unique_ptr<Part> part_;
};

}  // namespace tanrove
