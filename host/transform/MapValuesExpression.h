// A table that is looked up by one or more fields.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "host/transform/FieldScope.h"
#include "host/transform/Literal.h"

namespace KwBrevix_930 {

/// The output of the row whose cells equal the fields, the first one of several; defaultValue where there is none,
/// mapMissingTo where a field is missing, each missing where it is not given. A look-up costs the same for tables of
/// any length.
class MapValuesExpression : public Expression {
public:
    /// The literals are of the given type.
    MapValuesExpression(FieldType type, std::optional<Literal> defaultValue, std::optional<Literal> mapMissingTo);

    /// Adds a field to look up by, before the first row.
    void AddColumn(const Field& field, std::string name);

    /// Adds a row: a cell for each column, and what comes out. A row with a cell that is no value of its field is never
    /// found.
    void AddRow(const std::vector<std::string>& cells, Literal output);

    void Evaluate(std::span<const DerivedValue> slots, DerivedValue& result) const override;
    void AppendSlots(std::vector<std::size_t>& slots) const override;
    const std::string& GetFieldName() const override;

private:
    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    // Equal values of a column have one number.
    struct Column {
        Field field;
        std::string name;
        std::unordered_map<std::string, std::uint32_t, TextHash, std::equal_to<>> texts;
        std::unordered_map<double, std::uint32_t> numbers;
        std::uint32_t count = 0;

        std::optional<std::uint32_t> Find(const DerivedValue& value) const;
        std::optional<std::uint32_t> Add(const std::string& cell);
    };

    std::vector<Column> fColumns;
    // From the number of what the columns before have led to, and the number of the value, to the number that both
    // lead to. What the last column leads to is the place of an output.
    std::unordered_map<std::uint64_t, std::uint32_t> fSteps;
    std::uint32_t fStepCount = 1;
    std::vector<Literal> fOutputs;
    std::optional<Literal> fDefaultValue;
    std::optional<Literal> fMapMissingTo;
};

}  // namespace KwBrevix_930
