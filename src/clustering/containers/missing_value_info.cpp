#include <bit>
#include <cstdint>
#include <new>

#include "zul/clustering.h"

namespace zul::dax::types {
namespace {

class DefaultMissingInfo final : public IMissingValueInfo {
public:
    bool IsMissing(double x) const override { return std::bit_cast<std::uint64_t>(x) == kBits; }
    double MissingValue() const override { return std::bit_cast<double>(kBits); }

private:
    static constexpr std::uint64_t kBits = 0xFFFFFFFFFFFCBAFF;
};

class SpecificMissingInfo final : public IMissingValueInfo {
public:
    explicit SpecificMissingInfo(double m) : m_(m) {}
    bool IsMissing(double x) const override { return x == m_; }
    double MissingValue() const override { return m_; }

private:
    double m_;
};

}  // namespace

IMissingValueInfo::~IMissingValueInfo() = default;

SharedPtr<IMissingValueInfo> MakeDefaultMissingInfo() {
    return SharedPtr<IMissingValueInfo>(new (std::nothrow) DefaultMissingInfo);
}

SharedPtr<IMissingValueInfo> MakeMissingInfo(const double& m) {
    return SharedPtr<IMissingValueInfo>(new (std::nothrow) SpecificMissingInfo(m));
}

}  // namespace zul::dax::types
