/// @file
/// Hierarchical clustering, with the containers through which it exchanges data.
#pragma once

#include <zul/export.h>

#include <cstddef>

/// @defgroup clustering Hierarchical clustering
/// Hierarchical clustering, with the containers through which it exchanges data.
///
/// Objects that a function returns by pointer belong to the caller, who deletes them through their virtual
/// destructor. A failed allocation is reported as each declaration says, and so is an exception that leaves an
/// operation of the host's own table, matrix or joins; std::length_error, "vector<T> too long", for more
/// elements than a vector can ever hold, is the only exception. Nothing here sets a
/// floating-point mode: the default one is expected, in which NaN and infinite distances do not trap; after a
/// failure of an operation of the host's it is again that of the call. Cancelling a thread, or leaving it by
/// pthread_exit(), inside such an operation ends the thread as usual. Different objects may be used on different
/// threads at the same time; no object guards itself.

namespace zul {
/// Clustering and its containers.
namespace dax {
/// Containers, shared pointers and missing values.
namespace types {

/// @defgroup containers Containers and missing values
/// @ingroup clustering
/// The abstract vectors and tables through which data come and go, and what stands for a missing value.
/// @{

/// What an operation reports that may fail.
enum StatlibraryErrorCode : int { Success = 0, Failure = 1 };

/// A sequence of values of one type that can be read.
template <typename T>
class IReadableVector {
public:
    virtual ~IReadableVector() {}
    /// The number of elements.
    std::size_t size() const { return SizeImpl(); }
    /// Element i, counted from 0, not checked.
    const T& operator[](std::size_t i) const { return AtImpl(i); }
    /// The number of elements.
    virtual std::size_t SizeImpl() const = 0;
    /// Element i, counted from 0, not checked.
    virtual const T& AtImpl(std::size_t i) const = 0;
    /// The first of size() elements that lie side by side; of an empty vector not to be dereferenced.
    virtual const T* DataImpl() const = 0;
    /// Whether there are no elements.
    virtual bool EmptyImpl() const { return SizeImpl() == 0; }
};

/// A sequence of values of one type that can be read, written and resized.
///
/// The operations that return a status give Success, or Failure when memory could not be obtained; a length
/// that no vector can have throws std::length_error. A value given to them may be an element of the vector
/// itself.
template <typename T>
class IVector : public IReadableVector<T> {
public:
    using IReadableVector<T>::AtImpl;
    using IReadableVector<T>::DataImpl;
    /// As AssignImpl().
    StatlibraryErrorCode assign(std::size_t n, const T& value) { return AssignImpl(n, value); }
    /// Element i, counted from 0, not checked.
    virtual T& AtImpl(std::size_t i) = 0;
    /// Clears the vector, then makes it n copies of the value: after a failure it is empty.
    virtual StatlibraryErrorCode AssignImpl(std::size_t n, const T& value) = 0;
    /// Makes it n elements long, by copies of the value at the end or by leaving out the last ones. A failure
    /// changes nothing.
    virtual StatlibraryErrorCode ResizeImpl(std::size_t n, const T& value) = 0;
    /// The same with zeros, or whatever T() is.
    virtual StatlibraryErrorCode ResizeImpl(std::size_t n) = 0;
    /// Obtains memory for n elements in all, so that growing to them cannot fail. The elements stay, also after
    /// a failure.
    virtual StatlibraryErrorCode ReserveImpl(std::size_t n) = 0;
    /// The first of size() elements that lie side by side.
    virtual T* DataImpl() = 0;
};

/// A table of rows of equal length. Rows and columns are counted from 0 and not checked.
template <typename T>
class IRectangularArray {
public:
    virtual ~IRectangularArray() {}
    /// The element of a row and a column.
    virtual const T& At(int row, int column) const = 0;
    /// Stores the value, and returns it.
    virtual T Set(int row, int column, const T& value) = 0;
    /// The number of rows.
    virtual int RowCount() const = 0;
    /// The number of columns.
    virtual int ColumnCount() const = 0;
    /// The element of a row and a column.
    virtual T& At(int row, int column) = 0;
};

/// Which value stands for a missing one.
class ZUL_API IMissingValueInfo {
public:
    virtual ~IMissingValueInfo();
    /// Whether x stands for a missing value.
    virtual bool IsMissing(double x) const = 0;
    /// The value that stands for a missing one.
    virtual double MissingValue() const = 0;
};

/// One owner of a shared object. The owners of an object are a ring, doubly linked; there is no counter.
///
/// A link in a ring has to leave it by RemoveLink() before it ends; the destructor does not. A copied link is
/// in no ring. Links of one ring must not be used on several threads at once.
class ZUL_API SharedPtrLink {
public:
    /// A ring of one.
    SharedPtrLink();
    ~SharedPtrLink();  // NOLINT(performance-trivially-destructible): out of line, as the constructor
    /// Whether this is the only link of its ring, the one that is to release the object.
    bool IsReleaseable() const;
    /// The number of links of the ring.
    int RefCount() const;
    /// Takes a link into this ring, directly after this one. It leaves the ring in which it was; a link given
    /// to itself stays.
    void AddLink(SharedPtrLink* other);
    /// Leaves the ring and is a ring of one again.
    void RemoveLink();
    /// Each of the two links takes the place of the other, whether in two rings or in one.
    void Swap(SharedPtrLink& other);

private:
    SharedPtrLink* previous_;
    SharedPtrLink* next_;
};

/// A pointer that shares the ownership of its object with its copies: the last of them to go deletes the
/// object. All copies of one pointer belong to one thread.
template <typename T>
class SharedPtr {
public:
    /// Owns an object made by new, or nothing.
    explicit SharedPtr(T* object = nullptr) : object_(object) {}
    /// Shares the ownership.
    SharedPtr(const SharedPtr& other) : object_(other.object_) { other.link_.AddLink(&link_); }
    /// Shares the ownership of the other's object, and lets go of its own, which may own the other.
    SharedPtr& operator=(const SharedPtr& other) {  // NOLINT: the copy comes first
        SharedPtr copy(other);
        copy.object_ = object_;
        object_ = other.object_;
        link_.Swap(copy.link_);
        return *this;
    }
    ~SharedPtr() {
        if (link_.IsReleaseable())
            delete object_;
        else
            link_.RemoveLink();
    }
    /// The object; null when there is none.
    T* get() const { return object_; }
    /// The object, which must be there.
    T* operator->() const { return object_; }
    /// The object, which must be there.
    T& operator*() const { return *object_; }
    /// Whether there is an object.
    explicit operator bool() const { return object_ != nullptr; }

private:
    T* object_;
    mutable SharedPtrLink link_;
};

/// A vector of n copies of a value.
/// @return the vector, which the caller deletes; null when memory could not be obtained
/// @throws std::length_error for an n that no vector can have
ZUL_API IVector<double>* MakeIVectorDouble(std::size_t n, double value);

/// A vector of n copies of a value.
/// @return the vector, which the caller deletes; null when memory could not be obtained
/// @throws std::length_error for an n that no vector can have
ZUL_API IVector<int>* MakeIVectorInt(std::size_t n, int value);

/// A table of zeros.
/// @param rows number of rows
/// @param columns number of columns
/// @return the table, which the caller deletes; null when memory could not be obtained, and for negative
///     numbers
ZUL_API IRectangularArray<double>* MakeIRectangularArrayDouble(int rows, int columns);

/// The missing value is the NaN with the bits 0xFFFFFFFFFFFCBAFF. No other NaN is missing, nor is 1.23456e30.
/// @return an empty pointer when memory could not be obtained
ZUL_API SharedPtr<IMissingValueInfo> MakeDefaultMissingInfo();

/// The missing value is m, which is compared as a number: 0 is -0, and with NaN nothing is missing.
/// @return an empty pointer when memory could not be obtained
ZUL_API SharedPtr<IMissingValueInfo> MakeMissingInfo(const double& m);

/// @}

}  // namespace types

/// Distance matrices, linkage and memberships.
namespace clustering {

using types::StatlibraryErrorCode;

/// @addtogroup clustering
/// @{

/// How distant rows a and b are, over the columns c. s_c is the standard deviation of column c, divisor n - 1,
/// or 1 where that is 0.
enum DistanceEnums : int {
    Euclidean = 2000,  ///< square root of the sum of (a_c - b_c)^2
    SquaredEuclidean,  ///< sum of (a_c - b_c)^2
    Manhattan,         ///< sum of |a_c - b_c|
    Pearson,           ///< square root of the sum of (a_c - b_c)^2 / s_c^2
    SquaredPearson     ///< sum of (a_c - b_c)^2 / s_c^2
};

/// How distant a cluster k is from the union of clusters i and j, n_ij = n_i + n_j. For Ward, Median and Centroid
/// to mean what their names say the distances have to be squared Euclidean ones.
/// Source: G. N. Lance and W. T. Williams, A general theory of classificatory sorting strategies, 1967.
enum LinkageEnums : int {
    Average = 1000,  ///< (n_i d_ki + n_j d_kj) / n_ij
    Single,          ///< the smaller of d_ki and d_kj
    Complete,        ///< the larger of d_ki and d_kj
    Ward,            ///< ((n_i + n_k) d_ki + (n_j + n_k) d_kj - n_k d_ij) / (n_ij + n_k)
    McQuitty,        ///< (d_ki + d_kj) / 2
    Median,          ///< (d_ki + d_kj) / 2 - d_ij / 4
    Centroid         ///< (n_i d_ki + n_j d_kj) / n_ij - n_i n_j d_ij / n_ij^2
};

/// The distances between n objects, each pair once: (i, j) and (j, i) are one element. The diagonal is kept as
/// well. Rows are counted from 0.
///
/// Of the matrices that MakeDistanceMatrix() makes, elements outside read as NaN, and writing them does
/// nothing. A host may derive a matrix of its own; the functions below use it through these operations alone.
class ZUL_API DistanceMatrix {
public:
    virtual ~DistanceMatrix();
    /// The number of objects given to MakeDistanceMatrix(); Init() does not change it.
    int RowCount() const;
    /// The distance between objects i and j.
    double operator()(int i, int j) const;
    /// Sets the distance between objects i and j.
    void Set(int i, int j, double value);
    /// Makes the distances those of n objects, all with one value. To be called with RowCount() objects, since
    /// that remains the number of rows.
    /// @return Success; Failure, and a matrix without elements, when memory could not be obtained and for a
    ///     negative n
    StatlibraryErrorCode Init(int n, double value);

private:
    virtual int RowCountImpl() const = 0;
    virtual double GetImpl(int i, int j) const = 0;
    virtual void SetImpl(int i, int j, double value) = 0;
    virtual StatlibraryErrorCode InitImpl(int n, double value) = 0;
};

/// One join of two clusters. A cluster has the number of the lowest of its objects, counted from 0.
struct ZUL_API ClusterStep {
    double similarity;  ///< (1 - distance / maximumDistance) 100
    double distance;    ///< the distance at which the clusters were joined
    int cluster1;       ///< the lower number, which the joined cluster keeps
    int cluster2;       ///< the higher number, which is no more
    int size;           ///< number of objects in the joined cluster
};

/// A matrix of zeros for n objects, which takes n (n + 1) / 2 doubles.
/// @return the matrix, which the caller deletes; null when memory could not be obtained, and for a negative n
ZUL_API DistanceMatrix* MakeDistanceMatrix(int n);

/// The distances between the rows of a table. The terms of a distance are added in the order of the columns. A
/// NaN makes the distances of its row NaN; where its column's mean or s is used, all of them.
/// @param data n rows, one for each observation
/// @param measure which distance
/// @param standardize whether each value is first replaced by (value - mean) / s of its column; the Pearson
///     measures then do not divide by s again
/// @param out out: Init(n, 0) and the n (n - 1) / 2 distances; without columns Init(0, 0), whatever the measure
/// @return Success; Failure for an unknown measure, with `out` as it was, and when memory could not be obtained;
///     a failure of out.Init() as it is, but Success without columns
ZUL_API StatlibraryErrorCode CreateForClusterObservations(const types::IRectangularArray<double>& data,
                                                          DistanceEnums measure, bool standardize,
                                                          DistanceMatrix& out);

/// The distances between the columns of a table, 1 - r with Pearson's correlation r: but for rounding from 0, for
/// columns that rise together on a line, to 2, for columns of which one falls so. A constant column is at
/// distance 1 from every other. A NaN makes the distances of its column NaN; a table of one row or none makes
/// all of them NaN.
/// @param data p columns, one for each variable
/// @param absolute whether the distance is 1 - |r| instead
/// @param out out: Init(p, 0) and the p (p - 1) / 2 distances
/// @return Success; Failure when memory could not be obtained; a failure of out.Init() as it is
ZUL_API StatlibraryErrorCode CreateForClusterVariables(const types::IRectangularArray<double>& data,
                                                       bool absolute, DistanceMatrix& out);

/// Joins the two closest clusters, from n single objects on, until one is left.
///
/// Each cluster remembers its nearest neighbour, first among the higher numbers and of equally near ones the
/// highest; a joined cluster that comes strictly nearer takes its place, and when the neighbour itself is
/// joined it is searched anew among the higher numbers. Of equally distant pairs the one with the highest
/// number is joined, and of those the one whose other number is highest. Distances that are NaN are not near
/// anything; when no others are left the two highest numbers are joined.
/// Method: M. R. Anderberg, Cluster analysis for applications, 1973.
/// @param linkage how the distances to a joined cluster follow from those to its parts
/// @param maximumDistance the distance of similarity 0; if it is 0, similarities are infinite, or NaN for joins
///     at distance 0
/// @param distances in: the distances between RowCount() objects; out: used up, contents unspecified
/// @return the n - 1 joins in their order, none for n < 2, in a vector which the caller deletes; null when
///     memory could not be obtained. For an unknown linkage null, after the line "invalid linkage" on standard
///     output.
ZUL_API types::IReadableVector<ClusterStep>* RunClustering(LinkageEnums linkage, double maximumDistance,
                                                           DistanceMatrix& distances);

/// The partition into k clusters.
/// @param steps m joins that RunClustering() made, of m + 1 objects
/// @param k number of clusters, 1 to m + 1
/// @return the cluster of each object, 0 to k - 1 in the order of the lowest object of each cluster, in a vector
///     which the caller deletes; an empty vector for another k and for joins whose numbers are not 0 to m; null
///     when memory could not be obtained
ZUL_API types::IReadableVector<int>* FindMembersWithNumber(const types::IReadableVector<ClusterStep>& steps,
                                                           int k);

/// The partition at a level of similarity: that of the clusters that existed before the first join whose
/// similarity is below the level, or one cluster when none is. Nothing is below NaN, nor is NaN below anything.
/// @param steps joins that RunClustering() made
/// @param level a similarity as in the joins, 100 at distance 0
/// @return as FindMembersWithNumber()
ZUL_API types::IReadableVector<int>* FindMembersWithCut(const types::IReadableVector<ClusterStep>& steps,
                                                        double level);

/// @}

}  // namespace clustering
}  // namespace dax
}  // namespace zul
