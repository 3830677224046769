// The plug-in's one plain entry point.
#pragma once

#include "host/ScoreTranslator.h"
#include "numerics/Export.h"

/// Returns: a new translator, owned by the caller and deleted through its virtual destructor.
extern "C" KW_EXPORT KwBrevix_930::ScoreTranslator* GiveMyTranslator();
