// The host's exception and the texts of its messages.
#include "host/BXException.h"

#include <gmock/gmock.h>

#include <ostream>
#include <type_traits>

#include "host/BXErrorFormater.h"

namespace {

using KwBrevix_930::BXException;
using KwBrevix_930::gErrorFormater;
using testing::HasSubstr;

struct Row {
    int code;
    int argumentCount;
};

void PrintTo(const Row& row, std::ostream* stream) {
    *stream << row.code;
}

class MessageOfEachCode : public testing::TestWithParam<Row> {};

TEST_P(MessageOfEachCode, ContainsTheCodeAndEveryArgument) {
    const char* const given[] = {"alpha-1", "beta-2", "gamma-3", "delta-4", "epsilon-5", "zeta-6", "eta-7"};
    BXException error(&gErrorFormater);
    EXPECT_TRUE(error.PutErrorMessage(GetParam().code, given[0], given[1], given[2], given[3], given[4], given[5]));
    EXPECT_EQ(error.GetErrorCode(), GetParam().code);
    EXPECT_EQ(gErrorFormater.GetArgumentCount(GetParam().code), GetParam().argumentCount);
    ASSERT_EQ(error.GetArguments().size(), static_cast<std::size_t>(GetParam().argumentCount));
    EXPECT_THAT(error.what(), HasSubstr(std::to_string(GetParam().code)));
    for (std::size_t i = 0; i < error.GetArguments().size(); ++i) {
        EXPECT_EQ(error.GetArguments()[i], given[i]);
        EXPECT_THAT(error.what(), HasSubstr(given[i]));
    }
    EXPECT_EQ(std::string(error.what()), gErrorFormater.Format(GetParam().code, error.GetArguments()));
}

INSTANTIATE_TEST_SUITE_P(BXException, MessageOfEachCode,
                         testing::Values(Row{260114, 1}, Row{260115, 2}, Row{260120, 2}, Row{260153, 3}, Row{260221, 1},
                                         Row{260251, 6}, Row{260281, 2}, Row{260101, 3}, Row{260102, 2}, Row{260103, 3},
                                         Row{260104, 3}, Row{260105, 2}, Row{260106, 3}, Row{260107, 1},
                                         Row{260111, 3}));

TEST(BXException, IsAnOrdinaryStandardException) {
    static_assert(std::is_base_of_v<std::exception, BXException>);
    static_assert(std::has_virtual_destructor_v<BXException>);
    static_assert(std::is_copy_constructible_v<BXException>);
}

TEST(BXException, IsEmptyBeforeAnyMessage) {
    const BXException error(&gErrorFormater);
    EXPECT_EQ(error.GetErrorCode(), 0);
    EXPECT_TRUE(error.GetArguments().empty());
    EXPECT_STREQ(error.what(), "");
}

TEST(BXException, IsCopiedWholeByACatchSite) {
    try {
        try {
            BXException error(&gErrorFormater);
            error.PutErrorMessage(260115, "Indices", "REAL-SparseArray");
            throw error;
        } catch (BXException& inner) {
            throw BXException(inner);
        }
    } catch (const std::exception& outer) {
        const auto& error = dynamic_cast<const BXException&>(outer);
        EXPECT_EQ(error.GetErrorCode(), 260115);
        EXPECT_THAT(error.GetArguments(), testing::ElementsAre("Indices", "REAL-SparseArray"));
        EXPECT_THAT(error.what(), HasSubstr("REAL-SparseArray"));
    }
}

TEST(BXException, TakesANullArgumentForTheEmptyText) {
    BXException error(&gErrorFormater);
    EXPECT_TRUE(error.PutErrorMessage(260120, static_cast<const char*>(nullptr), "VectorInstance"));
    EXPECT_THAT(error.GetArguments(), testing::ElementsAre("", "VectorInstance"));
}

TEST(BXException, KeepsAnUnknownCodeWithoutArguments) {
    BXException error(&gErrorFormater);
    EXPECT_FALSE(error.PutErrorMessage(424242, "ignored"));
    EXPECT_EQ(error.GetErrorCode(), 424242);
    EXPECT_TRUE(error.GetArguments().empty());
    EXPECT_THAT(error.what(), HasSubstr("424242"));
}

TEST(BXException, KeepsTheCodeWithoutAFormatter) {
    BXException error(nullptr);
    EXPECT_FALSE(error.PutErrorMessage(260114, "VectorDictionary"));
    EXPECT_EQ(error.GetErrorCode(), 260114);
    EXPECT_STREQ(error.what(), "");
}

TEST(BXException, ReplacesItsMessage) {
    BXException error(&gErrorFormater);
    error.PutErrorMessage(260153, "clustering", "functionName", "SupportVectorMachineModel");
    error.PutErrorMessage(260114, "Coefficients");
    EXPECT_THAT(error.GetArguments(), testing::ElementsAre("Coefficients"));
    EXPECT_THAT(error.what(), Not(HasSubstr("clustering")));
}

TEST(BXException, MayBeFilledFromItsOwnArguments) {
    BXException error(&gErrorFormater);
    error.PutErrorMessage(260115, "a child of a name too long for the small string", "its parent");
    error.PutErrorMessage(260120, error.GetArguments()[0].c_str(), error.GetArguments()[1].c_str());
    EXPECT_THAT(error.GetArguments(),
                testing::ElementsAre("a child of a name too long for the small string", "its parent"));
}

TEST(BXErrorFormater, LeavesArgumentsAsTheyAre) {
    const std::string text = gErrorFormater.Format(260115, {"100%2 %s", "%1"});
    EXPECT_THAT(text, HasSubstr("100%2 %s"));
    EXPECT_THAT(text, HasSubstr("%1"));
}

TEST(BXErrorFormater, ListsTheArgumentsOfAnUnknownCodeAndOfAWrongNumber) {
    for (const int code : {1, 260115}) {
        const std::string text = gErrorFormater.Format(code, {"uno", "dos", "tres"});
        for (const char* part : {"uno", "dos", "tres"})
            EXPECT_THAT(text, HasSubstr(part));
        EXPECT_THAT(text, HasSubstr(std::to_string(code)));
    }
    EXPECT_THAT(gErrorFormater.Format(260115, {}), HasSubstr("260115"));
    EXPECT_EQ(gErrorFormater.GetArgumentCount(1), -1);
}

TEST(BXErrorFormater, IsReachedThroughItsInterface) {
    const ScoreContext::IErrorFormater& formater = gErrorFormater;
    EXPECT_EQ(formater.GetArgumentCount(260251), 6);
    EXPECT_THAT(formater.Format(260251, {"3", "Indices", "REAL-SparseArray", "2", "REAL-Entries", "REAL-SparseArray"}),
                HasSubstr("3 Indices (in REAL-SparseArray) but 2 REAL-Entries"));
}

}  // namespace
