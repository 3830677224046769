// Pieces of documents for the tests of expressions.
#pragma once

#include <string>

#include "tests/host/DerivedFields.h"

namespace transform_samples {

/// x, y: numbers; s: a text, of which "bad" is invalid; b: a boolean; day: a date.
inline const std::string kFields =
    "<DataField name='x' dataType='double'><Value value='-99' property='invalid'/></DataField>"
    "<DataField name='y' dataType='double'/><DataField name='s' dataType='string'><Value value='bad' "
    "property='invalid'/></DataField><DataField name='b' dataType='boolean'/>"
    "<DataField name='day' dataType='date'/>";

inline std::string Derived(const std::string& content, const std::string& type = "double",
                           const std::string& name = "d") {
    return "<DerivedField name='" + name + "' optype='categorical' dataType='" + type + "'>" + content +
           "</DerivedField>";
}

inline std::string Ref(const std::string& field) {
    return "<FieldRef field='" + field + "'/>";
}

inline std::string Constant(const std::string& text, const std::string& attributes = "") {
    return "<Constant " + attributes + ">" + text + "</Constant>";
}

inline std::string Apply(const std::string& function, const std::string& arguments,
                         const std::string& attributes = "") {
    return "<Apply function='" + function + "' " + attributes + ">" + arguments + "</Apply>";
}

/// parameters: ParameterField elements.
inline std::string Function(const std::string& name, const std::string& parameters, const std::string& body,
                            const std::string& attributes = "") {
    return "<DefineFunction name='" + name + "' optype='continuous' " + attributes + ">" + parameters + body +
           "</DefineFunction>";
}

inline std::string Parameter(const std::string& name, const std::string& attributes = "") {
    return "<ParameterField name='" + name + "' " + attributes + "/>";
}

}  // namespace transform_samples
