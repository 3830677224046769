#!/usr/bin/env python3
"""libsvm_files.py MODEL.pmml ROWS.csv FOLDER: what svm-predict needs to score the same rows with the same model.

Writes FOLDER/model.svm and FOLDER/rows.svm. For one-against-one models with a radial basis kernel, without probabilities.
"""
import csv
import sys
import xml.etree.ElementTree as ElementTree


def read_model(path):
    root = ElementTree.parse(path).getroot()
    prefix = root.tag[:root.tag.index("}") + 1]
    model = root.find(prefix + "SupportVectorMachineModel")
    target = next(field.get("name") for field in model.iter(prefix + "MiningField") if field.get("usageType") == "target")
    declaration = next(field for field in root.iter(prefix + "DataField") if field.get("name") == target)
    categories = [value.get("value") for value in declaration.iter(prefix + "Value")]
    fields = [field.get("field") for field in model.find(".//" + prefix + "VectorFields")]
    gamma = model.find(prefix + "RadialBasisKernelType").get("gamma")
    vectors = {}
    for instance in model.iter(prefix + "VectorInstance"):
        indices = instance.find(".//" + prefix + "Indices").text.split()
        entries = instance.find(".//" + prefix + "REAL-Entries").text.split()
        vectors[instance.get("id")] = " ".join(map("{}:{}".format, indices, entries))
    machines = {}
    for machine in model.findall(prefix + "SupportVectorMachine"):
        pair = categories.index(machine.get("targetCategory")), categories.index(machine.get("alternateTargetCategory"))
        ids = [vector.get("vectorId") for vector in machine.iter(prefix + "SupportVector")]
        list_of_values = machine.find(prefix + "Coefficients")
        values = [float(value.get("value")) for value in list_of_values]
        machines[pair] = list(zip(ids, values)), float(list_of_values.get("absoluteValue"))
    return categories, fields, gamma, vectors, machines


def write_model(path, categories, gamma, vectors, machines):
    # svm-predict takes the first of a pair where the decision is positive, the model its target where it is negative.
    count = len(categories)
    coefficients = {name: {} for name in vectors}
    constants = []
    for i in range(count):
        for j in range(i + 1, count):
            sign = -1.0 if (i, j) in machines else 1.0
            weights, constant = machines[(i, j) if (i, j) in machines else (j, i)]
            constants.append(repr(-sign * constant))
            for name, weight in weights:
                own, other = (i, j) if sign * weight > 0 else (j, i)
                coefficients[name][own, other] = sign * weight
    class_of = {name: next(iter(pairs))[0] for name, pairs in coefficients.items() if pairs}
    order = sorted(class_of, key=class_of.get)
    with open(path, "w") as out:
        print("svm_type c_svc\nkernel_type rbf\ngamma", gamma, file=out)
        print("nr_class", count, "\ntotal_sv", len(order), "\nrho", *constants, file=out)
        print("label", *range(count), file=out)
        print("nr_sv", *[sum(1 for name in order if class_of[name] == c) for c in range(count)], "\nSV", file=out)
        for name in order:
            own = class_of[name]
            row = [repr(coefficients[name].get((own, other), 0.0)) for other in range(count) if other != own]
            print(*row, vectors[name], file=out)


def main():
    model_path, rows_path, folder = sys.argv[1:]
    categories, fields, gamma, vectors, machines = read_model(model_path)
    write_model(folder + "/model.svm", categories, gamma, vectors, machines)
    with open(rows_path, newline="") as rows, open(folder + "/rows.svm", "w") as out:
        for row in csv.DictReader(rows):
            out.write("0 " + " ".join(f"{k + 1}:{row[field]}" for k, field in enumerate(fields)) + "\n")


if __name__ == "__main__":
    main()
