#pragma once

#include <cstddef>
#include <vector>

namespace plx {

/// Numbers of one column of results, kept as wide as the file has them: models of millions of cells are
/// common and most result files are single precision.
class RealColumn {
public:
    void set_wide(bool wide) {
        clear();
        is_wide_ = wide;
    }
    void clear() {
        narrow_.clear();
        wide_.clear();
    }
    void assign(std::size_t count, double value) {
        clear();
        if (is_wide_) {
            wide_.assign(count, value);
        } else {
            narrow_.assign(count, static_cast<float>(value));
        }
    }
    void push_back(double value) {
        if (is_wide_) {
            wide_.push_back(value);
        } else {
            narrow_.push_back(static_cast<float>(value));
        }
    }
    void set(std::size_t i, double value) {
        if (is_wide_) {
            wide_[i] = value;
        } else {
            narrow_[i] = static_cast<float>(value);
        }
    }
    double operator[](std::size_t i) const { return is_wide_ ? wide_[i] : static_cast<double>(narrow_[i]); }
    std::size_t size() const { return is_wide_ ? wide_.size() : narrow_.size(); }

private:
    bool is_wide_ = false;
    std::vector<float> narrow_;
    std::vector<double> wide_;
};

}  // namespace plx
