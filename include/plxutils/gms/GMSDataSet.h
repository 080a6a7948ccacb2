#pragma once

#include <cstddef>
#include <memory>
#include <unordered_map>
#include <vector>

#include "plxutils/export.h"

/// Values of a dataset at one time.
///
/// Rows and flags that a file announces but does not hold are missing: `numValues` tells how many rows were
/// read.
class PLX_EXPORT TimeStep {
public:
    TimeStep(int components, double time) : components(components), time(time) {}
    TimeStep(const TimeStep&) = delete;
    TimeStep& operator=(const TimeStep&) = delete;

    /// A component of a value; -1.0e9 when the dataset has no such value.
    double Value(int index, int component) const;
    /// Activity of a cell; false outside 0 to numCells - 1.
    bool Active(int cell) const;

    /// Makes room for `rows` more values and returns the doubles of the first new one, which hold anything.
    /// Row pointers are set.
    /// @throws std::bad_alloc
    double* AddRows(int rows);
    /// Forgets the rows from `rows` on.
    void KeepRows(int rows);

    int components;             ///< doubles per value, 0 when the file never said
    double** values = nullptr;  ///< numValues pointers to `components` doubles each
    double time;                ///< in the dataset's time unit
    int numValues = 0;
    int numCells = 0;

    /// 1 for each active cell, 0 for others; null when the flags were not in the file and every cell that
    /// Active tells of is active. Steps without flags of their own share those of the step before.
    std::shared_ptr<const std::vector<unsigned char>> status;
    /// Cells from here on are inactive, when they were not described by an earlier step either.
    int numDescribed = 0;

private:
    void Grow(std::size_t rows);

    std::unique_ptr<double[]> block_;
    std::unique_ptr<double*[]> rows_;
    std::size_t capacity_ = 0;
};

/// Time steps by their time, in the order in which the file first named each time.
class PLX_EXPORT TimeStepMap {
public:
    /// Enters a step; one of the same time is replaced and freed. A time that is not a number is never found
    /// again but kept. Returns the step.
    TimeStep* Set(std::unique_ptr<TimeStep> step);
    /// The step of exactly this time, or null.
    TimeStep* Find(double time) const;
    /// Of all steps the one whose time is nearest, the earlier in the file of two; null without steps.
    TimeStep* Nearest(double time) const;
    int GetCount() const { return static_cast<int>(steps_.size()); }
    /// Step i in the file's order, or null.
    TimeStep* GetAt(int i) const;

private:
    std::vector<std::unique_ptr<TimeStep>> steps_;
    std::unordered_map<double, std::size_t> by_time_;
};

/// One dataset of a GMS dataset file: values for the nodes, points or cells of one object.
class PLX_EXPORT GMSDataSet {
public:
    static constexpr int kNameSize = 1024;

    GMSDataSet();
    /// Prints "DataSet %s deleted" to standard output.
    ~GMSDataSet();
    GMSDataSet(const GMSDataSet&) = delete;
    GMSDataSet& operator=(const GMSDataSet&) = delete;

    /// Keeps at most 1023 bytes, up to the first NUL.
    void SetName(const char* text, int length);
    /// Number of the object that the values belong to: objectId + objectType / 100.
    double Key() const { return objectId + objectType / 100.0; }

    int objectId = 0;
    int numValues = 0;   ///< values of each time step, as announced
    int numCells = 0;    ///< status flags of each time step, as announced
    int components = 1;  ///< 3 for a vector dataset of a binary file; the text reader leaves 1
    int vectorType = 0;
    char name[kNameSize];
    /// 1 tin, 2 bhole, 3 mesh2d, 4 grid2d, 5 scat2d, 6 mesh3d, 7 grid3d, 8 scat3d, 0 unknown.
    int objectType = 0;
    double referenceTime = 0.0;
    bool hasActivity = false;
    TimeStepMap timeSteps;
};
