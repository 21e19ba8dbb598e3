// Where the distribution objects get their uniforms from.
#pragma once

#include <cstddef>
#include <span>

namespace zul::objects {

// A sequence of uniforms, produced a block ahead and handed out one by one. What counts as drawn is what was
// handed out, so that the state of a generator behind it does not depend on the length of its blocks.
class UniformSource {
public:
    UniformSource() = default;
    UniformSource(const UniformSource&) = delete;
    UniformSource& operator=(const UniformSource&) = delete;

    double Next() {
        if (next_ == end_) Refill();
        return *next_++;
    }
    // The next uniforms, at least one, for loops that do not stop half-way: Take() as many as were used.
    std::span<const double> Ahead() {
        if (next_ == end_) Refill();
        return {next_, end_};
    }
    void Take(std::size_t count) { next_ += count; }
    // The next uniforms u as slope * u + intercept.
    virtual void FillLine(double* out, std::size_t count, double slope, double intercept) {
        for (std::size_t i = 0; i < count; ++i)
            out[i] = slope * Next() + intercept;
    }

protected:
    ~UniformSource() = default;
    // Sets a new block of at least one uniform.
    virtual void Refill() = 0;
    void SetBlock(const double* begin, const double* end) {
        next_ = begin;
        end_ = end;
    }
    const double* Position() const { return next_; }
    std::size_t Left() const { return static_cast<std::size_t>(end_ - next_); }

private:
    const double* next_ = nullptr;
    const double* end_ = nullptr;
};

}  // namespace zul::objects
