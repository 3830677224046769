"""The distributions in high precision: sums of positive terms, more digits where a sum cancels, integrals.

None of the formulas is the library's: the incomplete functions are Kummer's and Gauss's series summed to the end, for
large parameters integrals of the density; the non-central functions are their Poisson mixtures term by term.
"""
import mpmath
from mpmath import mp, mpf

mp.dps = 50
TERMS = 60000


class TooLong(Exception):
    """The series would take too many terms; the caller draws other arguments."""


def kummer(x, p):
    """Sum x^n/((p+1)...(p+n))."""
    term = total = mpf(1)
    floor = mpf(10) ** -(mp.dps + 2)
    for n in range(1, TERMS):
        term *= x / (p + n)
        total += term
        if term < total * floor and x < p + n:
            return total
    raise TooLong


def gauss(x, a, b):
    """Sum (a+b)_n/(a+1)_n x^n."""
    term = total = mpf(1)
    floor = mpf(10) ** -(mp.dps + 2)
    for n in range(TERMS):
        ratio = (a + b + n) / (a + 1 + n) * x
        term *= ratio
        total += term
        if ratio < 1 and term < total * floor * (1 - max(ratio, x)):
            return total
    raise TooLong


def far_end(drop, x, direction, limit):
    """How far beyond x the exponent drop(distance) has grown by what 62 digits need."""
    distance = limit
    while drop(distance / 2) > 150:
        distance /= 2
    return x + direction * distance


def integral(log_density, x, end):
    """Gauss-Legendre over pieces between x and end, the integrand scaled to 1 at x (quad looks at absolute errors)."""
    step, level = (end - x) / 16, log_density(x)
    return mpmath.exp(level) * abs(mpmath.quad(lambda v: mpmath.exp(log_density(v) - level),
                                               [x + k * step for k in range(17)], method="gauss-legendre", maxdegree=7))


def gamma_tails(x, p):
    """(P, Q) of the regularised incomplete gamma function."""
    x, p = mpf(x), mpf(p)
    if x <= 0:
        return mpf(0), mpf(1)
    if p > 20000 and abs(x - p) < p / 20:
        with mpmath.workdps(mp.dps + 15):
            top = mpmath.loggamma(p)
            direction = 1 if x > p else -1
            level = (p - 1) * mpmath.log(x) - x
            end = far_end(lambda d: level - ((p - 1) * mpmath.log(x + direction * d) - x - direction * d), x, direction,
                          p / 2)
            tail = integral(lambda v: (p - 1) * mpmath.log(v) - v - top, x, end)
        return (1 - tail, +tail) if x > p else (+tail, 1 - tail)
    extra = int(max(0, (x - p) - p * mpmath.log(x / p)) / 2.3) + 5 if x > p else 5
    if extra > 1200:
        raise TooLong
    with mpmath.workdps(mp.dps + extra + int(abs(mpmath.log10(p)))):
        lower = mpmath.exp(p * mpmath.log(x) - x - mpmath.loggamma(p + 1)) * kummer(x, p)
        upper = 1 - lower
    return +lower, +upper


def beta_power(x, y, a, b):
    return mpmath.exp(a * mpmath.log(x) + b * mpmath.log(y) - mpmath.loggamma(a + 1) - mpmath.loggamma(b)
                      + mpmath.loggamma(a + b))


def beta_by_integral(x, y, a, b):
    """Both tails for large a and b."""
    with mpmath.workdps(mp.dps + 15):
        top = mpmath.loggamma(a) + mpmath.loggamma(b) - mpmath.loggamma(a + b)
        direction = 1 if x > a / (a + b) else -1

        def log_density(d):
            return (a - 1) * mpmath.log(x + d) + (b - 1) * mpmath.log(y - d)

        level = log_density(0)
        room = min(x, y) * mpf(9) / 10
        end = far_end(lambda d: level - log_density(direction * d), 0, direction, room)
        tail = integral(lambda d: log_density(d) - top, mpf(0), end)
    return (1 - tail, +tail) if direction > 0 else (+tail, 1 - tail)


def beta_cost(x, a, b):
    """About how many terms gauss takes."""
    return 2 * max(0, b * x - a) + 20 * mpmath.sqrt(a + b * x) + (150 / -mpmath.log(x) if x > 0.5 else 250)


def beta_tails(x, y, a, b):
    """(I_x(a, b), 1 - I_x(a, b)), x + y = 1."""
    x, y, a, b = mpf(x), mpf(y), mpf(a), mpf(b)
    if x <= 0:
        return mpf(0), mpf(1)
    if y <= 0:
        return mpf(1), mpf(0)
    if min(a, b) > 20000 and abs(x / a * (a + b) - 1) < 0.1 and abs(y / b * (a + b) - 1) < 0.1:
        return beta_by_integral(x, y, a, b)
    whole = a + b
    deviance = a * mpmath.log(a / (whole * x)) + b * mpmath.log(b / (whole * y))
    extra = 30 + int(deviance / 2.3 + abs(mpmath.log10(a)) + abs(mpmath.log10(b)))
    if extra > 1500 or min(beta_cost(x, a, b), beta_cost(y, b, a)) > TERMS:
        raise TooLong
    with mpmath.workdps(mp.dps + extra):
        x, y = (x, 1 - x) if x < y else (1 - y, y)
        if beta_cost(x, a, b) <= beta_cost(y, b, a):
            lower = beta_power(x, y, a, b) * gauss(x, a, b)
            upper = 1 - lower
        else:
            upper = beta_power(y, x, b, a) * gauss(y, b, a)
            lower = 1 - upper
    return +lower, +upper


def normal_tails(x):
    x = mpf(x) / mpmath.sqrt(2)
    return mpmath.erfc(-x) / 2, mpmath.erfc(x) / 2


def t_tails(t, df):
    t, df = mpf(t), mpf(df)
    y = t * t / (df + t * t)
    outside = beta_tails(df / (df + t * t), y, df / 2, mpf(1) / 2)[0] / 2
    return (1 - outside, outside) if t > 0 else (outside, 1 - outside)


def t_density(t, df):
    t, df = mpf(t), mpf(df)
    return mpmath.exp(mpmath.loggamma((df + 1) / 2) - mpmath.loggamma(df / 2) - mpmath.log(df * mpmath.pi) / 2
                      - (df + 1) / 2 * mpmath.log1p(t * t / df))


def f_tails(f, df1, df2):
    f, df1, df2 = mpf(f), mpf(df1), mpf(df2)
    whole = df2 + df1 * f
    return beta_tails(df1 * f / whole, df2 / whole, df1 / 2, df2 / 2)


def beta_density(x, y, a, b):
    return beta_power(x, y, a, b) * a / (x * y)


def gamma_density(x, p):
    return mpmath.exp((p - 1) * mpmath.log(x) - x - mpmath.loggamma(p))


def mixture_indices(weight_ratio, start):
    """Indices around start; weight_ratio(j) bounds term j+1 over term j."""
    floor = mpf(10) ** -(mp.dps + 8)
    high, size = start, mpf(1)
    while size > floor:
        size *= weight_ratio(high)
        high += 1
    low, size = start, mpf(1)
    while low > 0 and size > floor:
        low -= 1
        size /= weight_ratio(low)
    return low, high


def noncentral_gamma(z, a, half):
    """Sum of Poisson(j; half) P(a + j, z)."""
    z, a, half = mpf(z), mpf(a), mpf(half)
    mode = min(half, (-a + mpmath.sqrt(a * a + 4 * half * z)) / 2)
    start = int(max(mode, 0))
    low, high = mixture_indices(lambda j: half / (j + 1) * min(1, z / (a + j + 1)), start)
    weight = mpmath.exp(high * mpmath.log(half) - half - mpmath.loggamma(high + 1))
    step = mpmath.exp((a + high) * mpmath.log(z) - z - mpmath.loggamma(a + high + 1))
    value = step * kummer(z, a + high) if z < 2 * (a + high) + 100 and a + high < 20000 else gamma_tails(z, a + high)[0]
    total = weight * value
    for j in range(high, low, -1):
        step *= (a + j) / z
        value += step
        weight *= j / half
        total += weight * value
    return total


def noncentral_beta(x, y, a, b, half, odd=False):
    """Sum of Poisson(j; half) I_x(a + j, b); odd: weights half^(j+1/2) exp(-half)/Gamma(j + 3/2)."""
    x, y, a, b, half = (mpf(v) for v in (x, y, a, b, half))
    shift = mpf(1) / 2 if odd else mpf(0)

    def ratio(j):
        k = a + j
        return half / (j + 1 + shift) * min(1, x * (k + b) / (k + 1))

    mode = mpmath.findroot(lambda j: half * x * (a + j + b) - (j + 1) * (a + j + 1), max(half, 1)) if half > 4 else 0
    start = int(max(0, min(half, mode)))
    low, high = mixture_indices(ratio, start)
    weight = mpmath.exp((high + shift) * mpmath.log(half) - half - mpmath.loggamma(high + 1 + shift))
    value = beta_tails(x, y, a + high, b)[0]
    step = beta_power(x, y, a + high, b)
    total = weight * value
    for j in range(high, low, -1):
        step *= (a + j) / ((a + j - 1 + b) * x)
        value += step
        weight *= (j + shift) / half
        total += weight * value
    return total


def noncentral_t(t, df, delta):
    """P(T <= t)."""
    t, df, delta = mpf(t), mpf(df), mpf(delta)
    if t < 0:
        return mpf(1) - noncentral_t_positive(-t, df, -delta)
    return noncentral_t_positive(t, df, delta)


def noncentral_t_positive(t, df, delta):
    whole = df + t * t
    x, y, half = t * t / whole, df / whole, delta * delta / 2
    even = noncentral_beta(x, y, mpf(1) / 2, df / 2, half)
    odd = noncentral_beta(x, y, mpf(1), df / 2, half, odd=True)
    return mpmath.erfc(delta / mpmath.sqrt(2)) / 2 + (even + (odd if delta > 0 else -odd)) / 2


def noncentral_t_tail(t, df, delta):
    """The lower tail for t < 0: repeated with more digits until what cancels is made good."""
    digits = 80
    while digits < 1300:
        with mpmath.workdps(digits):
            value = noncentral_t(t, df, delta)
        if value > mpf(10) ** -(digits - 65):
            return +value
        digits *= 2
    raise TooLong


def noncentral_t_density(t, df, delta):
    t, df, delta = mpf(t), mpf(df), mpf(delta)
    size = abs(t * delta) * mpmath.sqrt((df + 2) / (df + t * t))  # the terms grow to about exp(size^2/2)
    digits = mp.dps + int(size ** 2 / 2 + size) + 20
    if digits > 1500:
        return noncentral_t_density_by_peak(t, df, delta)
    with mpmath.workdps(digits):
        argument = t * delta * mpmath.sqrt(2 / (df + t * t))
        even, odd = mpf(1), mpmath.gamma((df + 2) / 2) / mpmath.gamma((df + 1) / 2) if df < 1e6 else \
            mpmath.exp(mpmath.loggamma((df + 2) / 2) - mpmath.loggamma((df + 1) / 2))
        odd *= argument
        total, k = even + odd, 0
        square = argument * argument
        while max(abs(even), abs(odd)) > abs(total) * mpf(10) ** -60 or k < 4:
            even *= square * (df + 1 + k) / 2 / ((k + 1) * (k + 2))
            odd *= square * (df + 2 + k) / 2 / ((k + 2) * (k + 3))
            k += 2
            total += even + odd
            if k > 200000:
                raise TooLong
        return +(t_density(t, df) * mpmath.exp(-delta * delta / 2) * total)


def noncentral_t_density_by_peak(t, df, delta):
    """The integral over the scale s of s phi(t s - delta) times the density of s, in u = log s about its peak."""
    with mpmath.workdps(mp.dps + 15):
        top = mpmath.log(2) + df / 2 * mpmath.log(df / 2) - mpmath.loggamma(df / 2) - mpmath.log(2 * mpmath.pi) / 2

        def log_density(u):
            s = mpmath.exp(u)
            return top + (df + 1) * u - df * s * s / 2 - (t * s - delta) ** 2 / 2

        # (df + t^2) s^2 - t delta s - (df + 1) = 0
        half = t * delta / (2 * (df + t * t))
        peak = mpmath.log(half + mpmath.sqrt(half * half + (df + 1) / (df + t * t)))
        level = log_density(peak)
        left = far_end(lambda d: level - log_density(peak - d), peak, -1, mpf(2000))
        right = far_end(lambda d: level - log_density(peak + d), peak, 1, mpf(16))
        value = integral(log_density, peak, left) + integral(log_density, peak, right)
    return +value


def log_binomial(n, k):
    return mpmath.loggamma(n + 1) - mpmath.loggamma(k + 1) - mpmath.loggamma(n - k + 1)


def binomial_mass(k, n, p):
    k, n, p = mpf(k), mpf(n), mpf(p)
    return mpmath.exp(log_binomial(n, k) + k * mpmath.log(p) + (n - k) * mpmath.log1p(-p))


def hyper_mass(k, n, m, size):
    k, n, m, size = (mpf(v) for v in (k, n, m, size))
    return mpmath.exp(log_binomial(m, k) + log_binomial(size - m, n - k) - log_binomial(size, n))


def hyper_cdf(k, n, m, size):
    k = int(k)
    first = max(0, int(n + m - size))
    term = total = hyper_mass(k, n, m, size)
    for j in range(k, first, -1):
        term *= mpf(j) * (size - m - n + j) / ((m - j + 1) * mpf(n - j + 1))
        total += term
        if term < total * mpf(10) ** -62 and mpf(j) * (size - m - n + j) < (m - j + 1) * mpf(n - j + 1):
            break
    return total
