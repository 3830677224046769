// Opens what the translator keeps to itself to the tests.
#pragma once

#include "plugin/SVMTranslator.h"

namespace KwBrevix_930 {

class SVMTranslatorTestAccess {
public:
    static const ScoreDictionary* Dictionary(const SVMTranslator& translator) {
        return translator.SVMTranslatorDictionary;
    }
};

}  // namespace KwBrevix_930
