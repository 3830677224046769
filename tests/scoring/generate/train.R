# Trains the R models and writes what R says of them as JSON, one file a model: Rscript train.R FOLDER
# Numbers are written with 17 digits, as texts, so that no reader rounds them.
suppressMessages({library(e1071); library(kernlab); library(jsonlite)})

folder <- commandArgs(trailingOnly = TRUE)[1]
options(digits = 17)

exact <- function(x) {
  if (is.list(x)) return(lapply(x, exact))
  if (is.factor(x)) return(as.character(x))
  if (is.logical(x)) return(ifelse(is.na(x), "", ifelse(x, "true", "false")))
  if (is.numeric(x)) {
    texts <- ifelse(is.na(x), "", sprintf("%.17g", as.numeric(x)))
    if (is.matrix(x)) return(lapply(seq_len(nrow(x)), function(i) I(texts[matrix(c(rep(i, ncol(x)), seq_len(ncol(x))), ncol = 2)])))
    return(I(texts))
  }
  if (is.null(x)) return(NULL)
  I(as.character(x))
}

save_model <- function(name, dump) {
  dim_texts <- function(m) { d <- dim(m); matrix(sprintf("%.17g", m), d[1], d[2]) }
  writeLines(toJSON(exact(dump), auto_unbox = FALSE, null = "null"), file.path(folder, paste0(name, ".json")))
}

as_text_table <- function(frame) lapply(frame, function(column) {
  if (is.factor(column)) as.character(column)
  else if (is.logical(column)) ifelse(column, "true", "false")
  else sprintf("%.17g", as.numeric(column))
})

# What an e1071 machine is, and what predict says of the cases.
dump_e1071 <- function(name, model, cases, target, probability = FALSE) {
  answer <- predict(model, cases, decision.values = TRUE, probability = probability)
  decisions <- attr(answer, "decision.values")
  regression <- model$type %in% c(3, 4)
  save_model(name, list(
    trainer = paste("e1071", packageVersion("e1071")), kind = model$type,
    kernel = c("linear", "polynomial", "radial", "sigmoid")[model$kernel + 1],
    gamma = model$gamma, coef0 = model$coef0, degree = model$degree,
    columns = colnames(model$SV), vectors = as.matrix(model$SV), ids = rownames(model$SV),
    coefficients = t(as.matrix(model$coefs)), rho = model$rho,
    labels = if (model$nclasses > 1 && !regression) model$levels[model$labels] else character(0),
    counts = model$nSV, scaled = colnames(model$SV)[model$scaled],
    center = unname(model$x.scale[[1]]), scale = unname(model$x.scale[[2]]),
    y_center = model$y.scale[[1]], y_scale = model$y.scale[[2]],
    pairs = if (is.null(decisions)) character(0) else colnames(decisions),
    prob_a = model$probA, prob_b = model$probB,
    target = target, levels = model$levels, cases = as_text_table(cases),
    predicted = if (is.factor(answer)) as.character(answer) else unname(c(answer)),
    decisions = if (is.null(decisions)) NULL else unname(decisions),
    probabilities = if (probability) unname(attr(answer, "probabilities")[, model$levels[model$labels]]) else NULL))
}

# The same of a kernlab machine. Its kernel is on scaled columns, with the scaling in the model.
dump_kernlab <- function(name, model, cases, target, x) {
  regression <- type(model) == "eps-svr"
  scaling <- scaling(model)$x.scale
  y_scaling <- scaling(model)$y.scale
  matrices <- if (is.list(xmatrix(model))) xmatrix(model) else list(xmatrix(model))
  coefficients <- if (is.list(coef(model))) coef(model) else list(coef(model))
  answer <- predict(model, cases)
  decisions <- if (regression) NULL else predict(model, cases, type = "decision")
  parameters <- kpar(kernelf(model))
  save_model(name, list(
    trainer = paste("kernlab", packageVersion("kernlab")), kernel = class(kernelf(model))[1], parameters = parameters,
    columns = colnames(x), vectors = lapply(matrices, function(m) exact(unname(as.matrix(m)))),
    coefficients = lapply(coefficients, function(each) unname(c(each))), rho = b(model),
    scaled = names(scaling[[1]]), center = unname(scaling[[1]]), scale = unname(scaling[[2]]),
    y_center = unname(y_scaling[[1]]), y_scale = unname(y_scaling[[2]]),
    target = target, levels = if (regression) character(0) else lev(model), cases = as_text_table(cases),
    predicted = if (is.factor(answer)) as.character(answer) else unname(c(answer)),
    decisions = if (is.null(decisions)) NULL else unname(decisions)))
}

sample_rows <- function(frame, step) frame[seq(1, nrow(frame), by = step), , drop = FALSE]

dump_e1071("r_iris_radial", svm(Species ~ ., data = iris, cost = 2), sample_rows(iris[, 1:4], 3), "Species")
dump_e1071("r_iris_polynomial", svm(Species ~ ., data = iris[c(101:150, 1:100), ], type = "nu-classification",
                                    kernel = "polynomial", degree = 3, coef0 = 0.75, gamma = 0.3125),
           sample_rows(iris[, 1:4], 4), "Species")
dump_e1071("r_mtcars_linear", svm(mpg ~ cyl + disp + hp + wt, data = mtcars, kernel = "linear", epsilon = 0.05),
           mtcars[, c("cyl", "disp", "hp", "wt")], "mpg")
dump_e1071("r_warpbreaks_factors", svm(breaks ~ wool + tension, data = warpbreaks, cost = 3, gamma = 0.4375),
           sample_rows(warpbreaks[, c("wool", "tension")], 2), "breaks")
dump_e1071("r_toothgrowth_mixed", svm(len ~ supp + dose, data = ToothGrowth, cost = 2.5, epsilon = 0.125),
           sample_rows(ToothGrowth[, c("supp", "dose")], 2), "len")
set.seed(7)
dump_e1071("r_infert_probability",
           svm(outcome ~ education + age + parity + induced + spontaneous, kernel = "sigmoid", gamma = 0.03125, coef0 = 0.125,
               data = transform(infert, outcome = factor(ifelse(case == 1, "case", "control"))),
               subset = seq(1, 248, by = 3), probability = TRUE),
           sample_rows(infert[, c("education", "age", "parity", "induced", "spontaneous")], 5), "outcome", TRUE)
set.seed(11)
dump_e1071("r_iris_probability", svm(Species ~ ., data = iris, subset = seq(1, 150, by = 2), kernel = "linear", probability = TRUE),
           sample_rows(iris[, 1:4], 4), "Species", TRUE)
dump_e1071("r_chickwts_unscaled", svm(feed ~ weight, data = chickwts, scale = FALSE, gamma = 0.00048828125, cost = 4),
           sample_rows(chickwts["weight"], 2), "feed")
dump_e1071("r_one_class", svm(iris[1:50, 1:4], type = "one-classification", nu = 0.25, gamma = 0.5),
           sample_rows(iris[, 1:4], 5), "")

set.seed(3)
dump_kernlab("ksvm_iris_radial", ksvm(Species ~ ., data = iris, kernel = "rbfdot", kpar = list(sigma = 0.28125), C = 1.5),
             sample_rows(iris[, 1:4], 3), "Species", iris[, 1:4])
cars <- transform(mtcars, gear = factor(ifelse(am == 1, "manual", "automatic")))[, c("mpg", "disp", "wt", "gear")]
dump_kernlab("ksvm_cars_polynomial",
             ksvm(gear ~ ., data = cars, kernel = "polydot", kpar = list(degree = 2, scale = 0.375, offset = 1.25), C = 2),
             cars[, 1:3], "gear", cars[, 1:3])
air <- na.omit(airquality)
dump_kernlab("ksvm_air_regression",
             ksvm(Ozone ~ Solar.R + Wind + Temp, data = air[seq(1, 111, by = 2), ], kernel = "rbfdot", kpar = list(sigma = 0.1875), C = 5),
             sample_rows(air[, c("Solar.R", "Wind", "Temp")], 3), "Ozone", air[, c("Solar.R", "Wind", "Temp")])
dump_kernlab("ksvm_iris_tanh",
             ksvm(Species ~ ., data = iris[51:150, c(1, 3, 4, 5)] |> transform(Species = factor(Species)), kernel = "tanhdot",
                  kpar = list(scale = 0.0625, offset = 0.5), C = 1, scaled = FALSE),
             sample_rows(iris[51:150, c(1, 3, 4)], 3), "Species", iris[, c(1, 3, 4)])
