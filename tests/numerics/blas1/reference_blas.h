// The Fortran reference routines, the oracle of the level-1 tests; linked from Debian's static libblas, whatever else
// the machine uses as its BLAS.
#pragma once

extern "C" {
void dswap_(const int* n, double* x, const int* incx, double* y, const int* incy);
void dscal_(const int* n, const double* alpha, double* x, const int* incx);
void dcopy_(const int* n, const double* x, const int* incx, double* y, const int* incy);
void daxpy_(const int* n, const double* alpha, const double* x, const int* incx, double* y, const int* incy);
void drot_(const int* n, double* x, const int* incx, double* y, const int* incy, const double* c, const double* s);
void drotg_(double* a, double* b, double* c, double* s);
double ddot_(const int* n, const double* x, const int* incx, const double* y, const int* incy);
double dnrm2_(const int* n, const double* x, const int* incx);
double dasum_(const int* n, const double* x, const int* incx);
int idamax_(const int* n, const double* x, const int* incx);
}
