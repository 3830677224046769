// The plug-in's one plain entry point.
#include "plugin/entry_point.h"

#include "plugin/SVMTranslator.h"

KwBrevix_930::ScoreTranslator* GiveMyTranslator() {
    return new KwBrevix_930::SVMTranslator();
}
