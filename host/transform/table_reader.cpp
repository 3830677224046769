// Reads the expressions that are tables: Discretize and MapValues.
#include <algorithm>
#include <limits>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include <xercesc/dom/DOMElement.hpp>

#include "host/BaseTranslator.h"
#include "host/PMMLModelTags.h"
#include "host/refusal.h"
#include "host/transform/DiscretizeExpression.h"
#include "host/transform/ExpressionReader.h"
#include "host/transform/MapValuesExpression.h"

namespace KwBrevix_930 {

namespace {

using Tags = PMMLModelTags;
using xercesc::DOMElement;

std::vector<const DOMElement*> ChildrenOf(const DOMElement& parent, const char* tag) {
    std::vector<const DOMElement*> children;
    for (const DOMElement* child = BaseTranslator::GetFirstChildElt(&parent); child;
         child = BaseTranslator::GetNextSiblingElt(child)) {
        if (BaseTranslator::HasTag(child, tag))
            children.push_back(child);
    }
    return children;
}

// Columns are compared without the prefixes that some writers give them.
std::string WithoutPrefix(const std::string& name) {
    return name.substr(name.find(':') + 1);
}

DictVar::Interval ReadRange(const DOMElemUtility& reader, const DOMElement& element) {
    DictVar::Interval range;
    const std::string closure = reader.GetAttributeToString(&element, Tags::XML_ATT_CLOSURE, true);
    if (closure != "openOpen" && closure != "openClosed" && closure != "closedOpen" && closure != "closedClosed")
        RefuseAttribute(reader, element, Tags::XML_ATT_CLOSURE);
    range.isLeftClosed = closure.starts_with("closed");
    range.isRightClosed = closure.ends_with("Closed");
    if (reader.HasAttribute(&element, Tags::XML_ATT_LEFTMARGIN))
        range.left = reader.GetAttributeToDouble(&element, Tags::XML_ATT_LEFTMARGIN, true);
    if (reader.HasAttribute(&element, Tags::XML_ATT_RIGHTMARGIN))
        range.right = reader.GetAttributeToDouble(&element, Tags::XML_ATT_RIGHTMARGIN, true);
    if (!range.left && !range.right)
        Refuse(260120, std::string(Tags::XML_ATT_LEFTMARGIN) + " or " + Tags::XML_ATT_RIGHTMARGIN,
               Tags::XML_ELE_INTERVAL);
    constexpr double kUnbounded = std::numeric_limits<double>::infinity();
    if (!(range.left.value_or(-kUnbounded) <= range.right.value_or(kUnbounded)))
        RefuseAttribute(reader, element, Tags::XML_ATT_LEFTMARGIN);
    return range;
}

// The cells of a row by the names of their columns; of two cells of one name the first counts.
std::unordered_map<std::string, std::string> ReadCells(const DOMElemUtility& reader, const DOMElement& row) {
    std::unordered_map<std::string, std::string> cells;
    for (const DOMElement* cell = BaseTranslator::GetFirstChildElt(&row); cell;
         cell = BaseTranslator::GetNextSiblingElt(cell))
        cells.emplace(reader.GetElementName(cell), reader.GetTranscoder().ToNarrow(cell->getTextContent()));
    return cells;
}

// The type that texts have where nothing says it.
FieldType TypeOfTexts(const std::vector<std::string>& texts) {
    for (const std::string& text : texts) {
        if (MakeUntypedLiteral(text).type.IsText())
            return {FieldType::kString};
    }
    return {FieldType::kDouble};
}

}  // namespace

std::unique_ptr<Expression> ExpressionReader::ReadDiscretize(const DOMElement& element, std::optional<FieldType> type) {
    const std::string name = ReadFieldName(element);
    const Field field = FindField(element, name);
    if (field.type.IsText())
        Refuse(260106, "the field '" + name + "' of Discretize", field.type.GetName(), "a number");
    const auto elements = ChildrenOf(element, "DiscretizeBin");
    std::vector<std::string> texts;
    for (const DOMElement* bin : elements)
        texts.push_back(fReader.GetAttributeToString(bin, "binValue", true));
    const FieldType result = ReadOptionalType(element).value_or(type ? *type : TypeOfTexts(texts));
    std::vector<DiscretizeExpression::Bin> bins;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        fFunctions.fCurrent = elements[i];
        auto value = MakeLiteral(result, texts[i]);
        if (!value)
            RefuseAttribute(fReader, *elements[i], "binValue");
        const auto* range = fReader.GetChildElemByName(elements[i], Tags::XML_ELE_INTERVAL, true);
        bins.push_back({ReadRange(fReader, *range), std::move(*value)});
    }
    fFunctions.fCurrent = &element;
    return std::make_unique<DiscretizeExpression>(field, name, result, std::move(bins),
                                                  ReadOptionalLiteral(element, "defaultValue", result),
                                                  ReadOptionalLiteral(element, Tags::XML_ATT_MISSREPVALUE, result));
}

std::unique_ptr<Expression> ExpressionReader::ReadMapValues(const DOMElement& element, std::optional<FieldType> type) {
    if (!ChildrenOf(element, "TableLocator").empty())
        Refuse(260102, "TableLocator", "MapValues");
    const std::string output = WithoutPrefix(fReader.GetAttributeToString(&element, "outputColumn", true));
    const auto rows = ChildrenOf(*fReader.GetChildElemByName(&element, "InlineTable", true), "row");
    if (rows.empty())
        Refuse(260114, "InlineTable");
    std::vector<TableRow> kept;
    std::vector<std::string> outputs;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        auto cells = ReadCells(fReader, *rows[i]);
        const auto value = cells.find(output);
        if (value == cells.end())
            continue;
        outputs.push_back(value->second);
        kept.push_back({rows[i], i + 1, std::move(cells)});
    }
    if (outputs.empty())
        Refuse(260103, "column", output, "MapValues");
    const FieldType result = ReadOptionalType(element).value_or(type ? *type : TypeOfTexts(outputs));
    auto expression =
        std::make_unique<MapValuesExpression>(result, ReadOptionalLiteral(element, "defaultValue", result),
                                              ReadOptionalLiteral(element, Tags::XML_ATT_MISSREPVALUE, result));
    AddRows(*expression, ReadColumns(element, *expression), kept, outputs);
    fFunctions.fCurrent = &element;
    return expression;
}

// The names of the columns that the fields are looked up in.
std::vector<std::string> ExpressionReader::ReadColumns(const DOMElement& element, MapValuesExpression& expression) {
    const auto pairs = ChildrenOf(element, "FieldColumnPair");
    if (pairs.empty())
        Refuse(260115, "FieldColumnPair", "MapValues");
    std::vector<std::string> columns;
    for (const DOMElement* pair : pairs) {
        const std::string name = ReadFieldName(*pair);
        expression.AddColumn(FindField(*pair, name), name);
        columns.push_back(WithoutPrefix(fReader.GetAttributeToString(pair, "column", true)));
    }
    return columns;
}

// A row without a cell in one of the columns is never found; a column without a cell in any row is none.
void ExpressionReader::AddRows(MapValuesExpression& expression, const std::vector<std::string>& columns,
                               const std::vector<TableRow>& rows, const std::vector<std::string>& outputs) const {
    for (const std::string& column : columns) {
        if (std::none_of(rows.begin(), rows.end(), [&](const TableRow& row) { return row.cells.contains(column); }))
            Refuse(260103, "column", column, "MapValues");
    }
    for (std::size_t i = 0; i < rows.size(); ++i) {
        fFunctions.fCurrent = rows[i].element;
        std::vector<std::string> keys;
        for (const std::string& column : columns) {
            if (const auto cell = rows[i].cells.find(column); cell != rows[i].cells.end())
                keys.push_back(cell->second);
        }
        auto value = MakeLiteral(expression.GetType(), outputs[i]);
        if (!value)
            Refuse(260153, outputs[i], "the output column",
                   "row " + std::to_string(rows[i].number) + " of InlineTable");
        if (keys.size() == columns.size())
            expression.AddRow(keys, std::move(*value));
    }
}

}  // namespace KwBrevix_930
