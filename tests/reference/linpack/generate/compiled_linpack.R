# Writes ../CompiledLinpack.csv: what the LINPACK routines compiled into R give. Run with R --vanilla -f, in this folder.
#
# R's dpofa has a tolerance for the pivots and its dsvdc another test for convergence than the publication, so the
# matrices are well conditioned, and of dsvdc only the values are kept.
dyn.load(file.path(R.home("lib"), "libR.so"))
set.seed(19790102)
rows <- character(0)
hex <- function(v) paste(sprintf("%a", as.double(v)), collapse = ";")
add <- function(routine, n, p, job, ...) {
    parts <- list(...)
    inputs <- paste(sapply(parts$inputs, hex), collapse = "|")
    outputs <- paste(sapply(parts$outputs, hex), collapse = "|")
    rows <<- c(rows, paste(routine, n, p, job, inputs, outputs, sep = ","))
}
definite <- function(n) crossprod(matrix(runif(n * n, -1, 1), n)) + diag(n)

for (n in c(1L, 2L, 3L, 5L, 8L, 13L)) {
    a <- definite(n)
    upper <- function(m) m * upper.tri(m, TRUE)
    add("dpoco", n, n, 0, inputs = list(a),
        outputs = list(.Fortran("dpoco", a, n, n, rcond = double(1), double(n), integer(1))$rcond))
    r <- .Fortran("dpofa", r = a, n, n, integer(1))$r
    add("dpofa", n, n, 0, inputs = list(a), outputs = list(upper(r)))
    b <- runif(n, -1, 1)
    add("dposl", n, n, 0, inputs = list(a, b), outputs = list(.Fortran("dposl", r, n, n, b = b)$b))
    inverse <- .Fortran("dpodi", a = r, n, n, det = double(2), 11L)
    add("dpodi", n, n, 11, inputs = list(a), outputs = list(upper(inverse$a), inverse$det))

    for (m in unique(pmin(n - 1L, 0:3))) {
        m <- as.integer(m)
        band <- a * (abs(row(a) - col(a)) <= m)
        diag(band) <- rowSums(abs(band)) + 1
        abd <- matrix(0, m + 1L, n)
        for (j in 1:n) for (i in max(1, j - m):j) abd[m + 1 + i - j, j] <- band[i, j]
        rb <- .Fortran("dpbfa", r = abd, m + 1L, n, m, integer(1))$r
        add("dpbfa", n, m, 0, inputs = list(abd), outputs = list(rb))
        add("dpbsl", n, m, 0, inputs = list(abd, b), outputs = list(.Fortran("dpbsl", rb, m + 1L, n, m, b = b)$b))
    }

    for (job in c(0L, 1L)) {
        t <- if (job == 0L) a * lower.tri(a, TRUE) else upper(a)
        add("dtrco", n, n, job, inputs = list(t),
            outputs = list(.Fortran("dtrco", t, n, n, rcond = double(1), double(n), job)$rcond))
        for (transposed in c(0L, 10L)) {
            add("dtrsl", n, n, job + transposed, inputs = list(t, b),
                outputs = list(.Fortran("dtrsl", t, n, n, b = b, job + transposed, integer(1))$b))
        }
    }

    pivoted <- .Fortran("dchdc", a = a, n, n, double(n), jpvt = integer(n), 1L, integer(1))
    add("dchdc", n, n, 1, inputs = list(a), outputs = list(upper(pivoted$a), pivoted$jpvt))

    for (p in unique(c(1L, (n + 1L) %/% 2L, n, n + 2L))) {
        x <- matrix(runif(n * p, -1, 1), n)
        for (job in c(0L, 1L)) {
            qr <- .Fortran("dqrdc", x = x, n, n, p, qraux = double(p), jpvt = integer(p), double(p), job)
            jpvt <- if (job == 0L) 1:p else qr$jpvt
            k <- min(n, p)
            add("dqrdc", n, p, job, inputs = list(x), outputs = list(qr$x, qr$qraux[1:k], jpvt))
            y <- runif(n, -1, 1)
            sl <- .Fortran("dqrsl", qr$x, n, n, k, qr$qraux, y, qy = double(n), qty = double(n), b = double(k),
                           rsd = double(n), xb = double(n), 11111L, integer(1))
            add("dqrsl", n, p, job, inputs = list(x, y), outputs = list(sl$qy, sl$qty, sl$b, sl$rsd, sl$xb))
        }
        m <- min(n + 1L, p)
        svd <- .Fortran("dsvdc", x, n, n, p, s = double(m), double(p), double(1), 1L, double(1), 1L, double(n), 0L,
                        integer(1))
        add("dsvdc", n, p, 0, inputs = list(x), outputs = list(svd$s))
    }
}

head <- c(
    "# function  Linpack, the routines that R compiles    columns  routine n p job inputs outputs",
    paste0("# source    generate/compiled_linpack.R, R ", getRversion(), " with the reference BLAS; random matrices"),
    "# digits    hex floats; arrays by columns, ';' between elements and '|' between arrays; p is the number of columns,",
    "#           of diagonals above the main one for bands",
    "# tolerance REL(2048 eps) of the largest element of an array; rcond REL(256 eps / rcond)",
    "routine,n,p,job,inputs,outputs")
writeLines(c(head, rows), "../CompiledLinpack.csv")
