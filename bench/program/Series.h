#pragma once

#include <algorithm>
#include <vector>

namespace mirrolet::bench {

/// Holds the values of one figure that was measured several times.
class Series {
  public:
    void add(double value) { values.insert(std::upper_bound(values.begin(), values.end(), value), value); }

    [[nodiscard]] std::size_t size() const { return values.size(); }
    /// Returns the lowest value, or 0 if there is no value yet.
    [[nodiscard]] double least() const { return values.empty() ? 0 : values.front(); }
    [[nodiscard]] double median() const {
        return values.empty() ? 0 : (values[(values.size() - 1) / 2] + values[values.size() / 2]) / 2;
    }
    [[nodiscard]] double most() const { return values.empty() ? 0 : values.back(); }

  private:
    std::vector<double> values; ///< The values are sorted.
};

} // namespace mirrolet::bench
