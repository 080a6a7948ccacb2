#pragma once

#include <memory>
#include <vector>

#include "plxutils/export.h"

/// For each of a number of nodes, a list of (identifier, value) pairs: the cells around a node and their
/// weights.
///
/// Faults are reported through the registered error function and leave the object as it was.
class PLX_EXPORT Results {
public:
    Results();
    /// Copies node count, sizes and identifiers. Of each node's values only the first half arrives, the rest
    /// is 0: deliberate, hosts that copy results count on the identifiers alone.
    Results(const Results& other);
    /// Assignment keeps everything.
    Results& operator=(const Results& other);
    ~Results();

    /// Drops everything and starts with `n` nodes without results; a negative n counts as 0.
    void set_nnodes(int n);
    /// Gives a node `count` pairs, all zero.
    void set_size(int node, int count);
    /// Stores a pair. An index equal to the node's size is accepted and lands in a spare entry.
    void set_results(int node, int index, int id, double value);
    /// Number of pairs of a node; 0 after a report for a node that is not there.
    int result_size(int node);
    /// Reads a pair; both are 0 after a report. An index equal to the node's size reads the spare entry.
    void result(int node, int index, int& id, double& value);
    int total_nodes() const;

private:
    void cleanup();
    bool reachable(const char* missing, const char* bad_node, const char* bad_index, int node,
                   int index) const;

    struct Lists;
    std::unique_ptr<Lists> lists_;
};
