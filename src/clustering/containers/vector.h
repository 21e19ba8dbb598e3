#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "frame/errors.h"
#include "frame/recover.h"
#include "zul/clustering.h"

namespace zul::dax::types {

// The one vector behind the interfaces.
template <typename T>
class Vector final : public IVector<T> {
public:
    Vector() = default;
    Vector(std::size_t n, const T& value) : elements_(Checked(n), value) {}

    std::size_t SizeImpl() const override { return elements_.size(); }
    const T& AtImpl(std::size_t i) const override { return elements_[i]; }
    const T* DataImpl() const override { return elements_.data(); }
    bool EmptyImpl() const override { return elements_.empty(); }
    T& AtImpl(std::size_t i) override { return elements_[i]; }
    T* DataImpl() override { return elements_.data(); }

    // Assigning and resizing copy the value first, since it may be an element.
    StatlibraryErrorCode AssignImpl(std::size_t n, const T& value) override {
        return Try([&] {
            const T copy = value;
            elements_.clear();
            elements_.assign(Checked(n), copy);
        });
    }
    StatlibraryErrorCode ResizeImpl(std::size_t n, const T& value) override {
        return Try([&] {
            const T copy = value;
            elements_.resize(Checked(n), copy);
        });
    }
    StatlibraryErrorCode ResizeImpl(std::size_t n) override { return ResizeImpl(n, T()); }
    StatlibraryErrorCode ReserveImpl(std::size_t n) override {
        return Try([&] { elements_.reserve(Checked(n)); });
    }

private:
    static std::size_t Checked(std::size_t n) {
        if (n > PTRDIFF_MAX / sizeof(T)) frame::ThrowVectorTooLong();
        return n;
    }

    template <typename Work>
    static StatlibraryErrorCode Try(Work work) {
        return frame::OnBadAlloc(Failure, [&] {
            work();
            return Success;
        });
    }

    std::vector<T> elements_;
};

}  // namespace zul::dax::types
