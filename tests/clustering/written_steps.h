// The clustering as its rules are written, one sentence after the other, over a square of distances.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "zul/clustering.h"

namespace zul::test {

using Square = std::vector<std::vector<double>>;

class WrittenSteps {
public:
    WrittenSteps(dax::clustering::LinkageEnums linkage, double maximumDistance, Square square)
        : distances(std::move(square)), linkage_(linkage), maximum_(maximumDistance) {
        const std::size_t n = distances.size();
        active_.assign(n, true);
        sizes_.assign(n, 1);
        nearest_.assign(n, {kInf, 0});
        Refresh(0, 0, 0);
        for (std::size_t step = 0; step + 1 < n; ++step)
            Step(step + 2 == n);
    }

    Square distances;
    std::vector<dax::clustering::ClusterStep> steps;

private:
    static constexpr double kInf = std::numeric_limits<double>::infinity();

    double& At(std::size_t i, std::size_t j) { return i < j ? distances[j][i] : distances[i][j]; }

    void Step(bool last) {
        std::size_t lo = 0;
        std::size_t hi = 0;
        double d = 0;
        bool found = false;
        for (std::size_t a = 0; a < active_.size(); ++a) {
            if (!active_[a] || nearest_[a].second == a) continue;
            const auto [low, high] = std::minmax(a, nearest_[a].second);
            const double distance = nearest_[a].first;
            if (!found || distance < d || (distance == d && (high > hi || (high == hi && low > lo)))) {
                lo = low;
                hi = high;
                d = distance;
                found = true;
            }
        }
        if (!found) {
            for (std::size_t a = 0; a < active_.size(); ++a)
                if (active_[a]) lo = std::exchange(hi, a);
            d = At(lo, hi);
        }
        const double ni = sizes_[lo];
        const double nj = sizes_[hi];
        steps.push_back({(1 - d / maximum_) * 100, d, static_cast<int>(lo), static_cast<int>(hi),
                         static_cast<int>(ni + nj)});
        if (last) return;
        for (std::size_t c = 0; c < active_.size(); ++c)
            if (active_[c] && c != lo && c != hi)
                At(c, lo) = Update(d, At(c, lo), At(c, hi), ni, nj, sizes_[c]);
        sizes_[lo] = ni + nj;
        active_[hi] = false;
        Refresh(lo, hi, lo);
    }

    void Refresh(std::size_t i, std::size_t j, std::size_t k) {
        nearest_[i] = {kInf, i};
        nearest_[j] = {kInf, j};
        nearest_[k] = {kInf, i};
        for (std::size_t a = 0; a < active_.size(); ++a) {
            if (!active_[a]) continue;
            if (nearest_[a].second == i || nearest_[a].second == j) {
                nearest_[a] = {kInf, a};
                for (std::size_t b = a + 1; b < active_.size(); ++b)
                    if (active_[b] && (At(a, b) < nearest_[a].first || At(a, b) == nearest_[a].first))
                        nearest_[a] = {At(a, b), b};
            } else if (At(k, a) < nearest_[a].first) {
                nearest_[a] = {At(k, a), k};
            }
        }
    }

    double Update(double dij, double dki, double dkj, double ni, double nj, double nk) const {
        using namespace dax::clustering;
        const double nij = ni + nj;
        switch (linkage_) {
            case Average:
                return (ni * dki + nj * dkj) / nij;
            case Single:
                return dkj < dki ? dkj : dki;
            case Complete:
                return dkj > dki ? dkj : dki;
            case Ward:
                return ((ni + nk) * dki + (nj + nk) * dkj - nk * dij) / (nij + nk);
            case McQuitty:
                return (dki + dkj) * 0.5;
            case Median:
                return (dki + dkj) * 0.5 - dij * 0.25;
            case Centroid:
                return (ni * dki + nj * dkj) / nij - nj * ni * dij / (nij * nij);
        }
        return 0;
    }

    dax::clustering::LinkageEnums linkage_;
    double maximum_;
    std::vector<bool> active_;
    std::vector<double> sizes_;
    std::vector<std::pair<double, std::size_t>> nearest_;
};

inline void Fill(dax::clustering::DistanceMatrix* m, const Square& distances) {
    for (std::size_t i = 0; i < distances.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            m->Set(static_cast<int>(i), static_cast<int>(j), distances[i][j]);
}

// Zeros of either sign are one distance, and so are all NaN.
inline bool SameDistance(double a, double b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

inline bool SameStep(const dax::clustering::ClusterStep& a, const dax::clustering::ClusterStep& b) {
    return SameDistance(a.similarity, b.similarity) && SameDistance(a.distance, b.distance) &&
           a.cluster1 == b.cluster1 && a.cluster2 == b.cluster2 && a.size == b.size;
}

using Steps = std::unique_ptr<dax::types::IReadableVector<dax::clustering::ClusterStep>>;

// What differs from the written rules in the steps; empty if nothing does.
inline std::string Difference(const WrittenSteps& written, const Steps& steps) {
    std::ostringstream text;
    text.precision(17);
    if (steps == nullptr || steps->size() != written.steps.size()) return "another number of joins";
    for (std::size_t s = 0; s < steps->size(); ++s) {
        if (SameStep((*steps)[s], written.steps[s])) continue;
        for (const auto& step : {(*steps)[s], written.steps[s]})
            text << " join " << s << ": " << step.cluster1 << " " << step.cluster2 << " at " << step.distance
                 << " " << step.similarity << " of " << step.size;
        return text.str();
    }
    return text.str();
}

}  // namespace zul::test
