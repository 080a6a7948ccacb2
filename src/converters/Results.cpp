#include "plxutils/converters/Results.h"

#include <algorithm>
#include <cstring>

#include "gms/callbacks.h"

struct Results::Lists {
    int nnodes = 0;
    std::vector<int> sizes;
    // One spare entry each: an index equal to the size is accepted.
    std::vector<std::vector<int>> ids;
    std::vector<std::vector<double>> values;
};

Results::Results() : lists_(std::make_unique<Lists>()) {}

Results::Results(const Results& other) : lists_(std::make_unique<Lists>(*other.lists_)) {
    for (int node = 0; node < lists_->nnodes; ++node) {
        const auto at = static_cast<std::size_t>(node);
        auto& values = lists_->values[at];
        // Half of each value list is lost in a copy on purpose: hosts that copy results use the identifiers
        // alone.
        std::fill(values.begin(), values.end(), 0.0);
        if (lists_->sizes[at] == 0) continue;
        std::memcpy(values.data(), other.lists_->values[at].data(),
                    static_cast<std::size_t>(lists_->sizes[at]) * 4);
    }
}

Results& Results::operator=(const Results& other) {
    *lists_ = *other.lists_;
    return *this;
}

Results::~Results() = default;

void Results::cleanup() { *lists_ = Lists(); }

void Results::set_nnodes(int n) {
    cleanup();
    const auto count = static_cast<std::size_t>(std::max(n, 0));
    lists_->nnodes = static_cast<int>(count);
    lists_->sizes.assign(count, 0);
    lists_->ids.resize(count);
    lists_->values.resize(count);
}

void Results::set_size(int node, int count) {
    if (node < 0 || node >= lists_->nnodes) {
        GMS_ReportError("Set_Size : [%d] node is outside of created boundaries [0,%d]\n", node,
                        lists_->nnodes);
        return;
    }
    if (count < 0) {
        GMS_ReportError("Set_Size : cannot create a negative number of results\n");
        return;
    }
    const auto at = static_cast<std::size_t>(node);
    const auto entries = count == 0 ? 0 : static_cast<std::size_t>(count) + 1;
    lists_->sizes[at] = count;
    lists_->ids[at].assign(entries, 0);
    lists_->values[at].assign(entries, 0.0);
}

bool Results::reachable(const char* missing, const char* bad_node, const char* bad_index, int node,
                        int index) const {
    if (lists_->nnodes == 0) {
        GMS_ReportError("%s", missing);
        return false;
    }
    if (node < 0 || node >= lists_->nnodes) {
        GMS_ReportError(bad_node, node, lists_->nnodes);
        return false;
    }
    const int size = lists_->sizes[static_cast<std::size_t>(node)];
    if (index < 0 || index > size) {
        GMS_ReportError(bad_index, index, size);
        return false;
    }
    // A node without results passes the check with index 0 but has no list to hold it.
    return size > 0;
}

void Results::set_results(int node, int index, int id, double value) {
    if (!reachable("Set_Results : Data sizes must be set before values.",
                   "Set_Results : node [%d] is outside of created boundaries [0,%d]\n",
                   "Set_Results : index [%d] is outside of created boundaries [0,%d]\n", node, index)) {
        return;
    }
    lists_->ids[static_cast<std::size_t>(node)][static_cast<std::size_t>(index)] = id;
    lists_->values[static_cast<std::size_t>(node)][static_cast<std::size_t>(index)] = value;
}

void Results::result(int node, int index, int& id, double& value) {
    id = 0;
    value = 0.0;
    if (!reachable("Result : Data must be set before results can be expected.",
                   "Result : node [%d] is outside of created boundaries [0,%d]\n",
                   "Result : index [%d] is outside of created boundaries [0,%d]\n", node, index)) {
        return;
    }
    id = lists_->ids[static_cast<std::size_t>(node)][static_cast<std::size_t>(index)];
    value = lists_->values[static_cast<std::size_t>(node)][static_cast<std::size_t>(index)];
}

int Results::result_size(int node) {
    if (node >= 0 && node < lists_->nnodes) return lists_->sizes[static_cast<std::size_t>(node)];
    GMS_ReportError("Result_Size : [%d] node is outside of created boundaries [0,%d]\n", node,
                    lists_->nnodes);
    return 0;
}

int Results::total_nodes() const { return lists_->nnodes; }
