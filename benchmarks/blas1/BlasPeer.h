// A BLAS to compare with, loaded from its own file: several define the same names, so none is linked.
#pragma once

#include <memory>
#include <string>
#include <vector>

/// The level-1 routines under the calling form of Fortran.
struct Level1Routines {
    void (*swap)(const int* n, double* x, const int* incx, double* y, const int* incy);
    void (*scal)(const int* n, const double* alpha, double* x, const int* incx);
    void (*copy)(const int* n, const double* x, const int* incx, double* y, const int* incy);
    void (*axpy)(const int* n, const double* alpha, const double* x, const int* incx, double* y, const int* incy);
    void (*rot)(const int* n, double* x, const int* incx, double* y, const int* incy, const double* c, const double* s);
    double (*dot)(const int* n, const double* x, const int* incx, const double* y, const int* incy);
    double (*nrm2)(const int* n, const double* x, const int* incx);
    double (*asum)(const int* n, const double* x, const int* incx);
    int (*amax)(const int* n, const double* x, const int* incx);
};

class BlasPeer {
public:
    /// Returns: null when path is empty, cannot be loaded or lacks a routine.
    static std::unique_ptr<BlasPeer> Load(const std::string& name, const std::string& path);
    ~BlasPeer();
    BlasPeer(const BlasPeer&) = delete;
    BlasPeer& operator=(const BlasPeer&) = delete;

    const std::string& Name() const { return fName; }
    const Level1Routines& Routines() const { return fRoutines; }

private:
    BlasPeer(const std::string& name, void* library) : fName(name), fLibrary(library) {}
    bool FindRoutines();

    std::string fName;
    void* fLibrary;
    Level1Routines fRoutines{};
};
