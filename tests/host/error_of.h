// Runs something that must fail and hands out its error.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/BXErrorFormater.h"
#include "host/BXException.h"

/// Returns: the exception that the call throws; one without a code, and a failed test, where it throws none.
template <typename Call>
KwBrevix_930::BXException ErrorOf(Call&& call) {
    try {
        call();
    } catch (const KwBrevix_930::BXException& error) {
        return error;
    }
    ADD_FAILURE() << "no BXException was thrown";
    return KwBrevix_930::BXException(&KwBrevix_930::gErrorFormater);
}

/// Expects code and arguments.
inline void ExpectError(const KwBrevix_930::BXException& error, int code, const std::vector<std::string>& arguments) {
    EXPECT_EQ(error.GetErrorCode(), code) << error.what();
    EXPECT_EQ(error.GetArguments(), arguments) << error.what();
}
