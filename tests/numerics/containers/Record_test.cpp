// Records: sizes at construction, copies that are their own, resizing.
#include "numerics/containers/Record.h"

#include <gtest/gtest.h>

#include <climits>
#include <type_traits>
#include <vector>

namespace {

using KwCommon_930::Record;

Record Filled(const std::vector<double>& values) {
    Record record(static_cast<int>(values.size()));
    for (int i = 0; i < record.Size(); ++i) {
        record[i] = values[static_cast<std::size_t>(i)];
    }
    return record;
}

std::vector<double> ValuesOf(const Record& record) {
    return {record.GetAll(), record.GetAll() + record.Size()};
}

TEST(Record, DefaultIsTwoZeros) {
    EXPECT_EQ(ValuesOf(Record()), (std::vector<double>{0.0, 0.0}));
}

TEST(Record, IsMadeOfZeros) {
    EXPECT_EQ(ValuesOf(Record(5)), std::vector<double>(5, 0.0));
    const Record implicit = 3;
    EXPECT_EQ(ValuesOf(implicit), std::vector<double>(3, 0.0));
}

TEST(Record, NegativeSizeGivesOneZero) {
    EXPECT_EQ(Record(-5).Size(), 1);
    EXPECT_EQ(Record(-5)[0], 0.0);
    EXPECT_EQ(Record(INT_MIN).Size(), 1);
}

TEST(Record, SizeZeroHasNoArray) {
    Record empty(0);
    EXPECT_EQ(empty.Size(), 0);
    EXPECT_EQ(empty.GetAll(), nullptr);
    EXPECT_EQ(static_cast<const Record&>(empty).GetAll(), nullptr);
}

TEST(Record, CopyIsItsOwn) {
    const Record source = Filled({2.385, -4.5, 8.25});
    Record copy(source);
    copy[1] = 99.0;
    EXPECT_EQ(ValuesOf(source), (std::vector<double>{2.385, -4.5, 8.25}));
    EXPECT_EQ(ValuesOf(copy), (std::vector<double>{2.385, 99.0, 8.25}));
    EXPECT_EQ(Record(Record(0)).GetAll(), nullptr);
}

TEST(Record, AssignmentTakesSizeAndValues) {
    Record target(5);
    Record source = Filled({2.385, -4.5, 8.25});
    target = source;
    source[0] = 99.0;
    EXPECT_EQ(ValuesOf(target), (std::vector<double>{2.385, -4.5, 8.25}));
    target = Record(0);
    EXPECT_EQ(target.Size(), 0);
    EXPECT_EQ(target.GetAll(), nullptr);
}

TEST(Record, AssignmentOfEqualSizeKeepsTheArray) {
    Record target(3);
    const double* const array = target.GetAll();
    target = Filled({2.385, -4.5, 8.25});
    EXPECT_EQ(target.GetAll(), array);
    EXPECT_EQ(ValuesOf(target), (std::vector<double>{2.385, -4.5, 8.25}));
}

TEST(Record, SelfAssignmentChangesNothing) {
    Record record = Filled({2.385, -4.5});
    const double* const array = record.GetAll();
    const Record& same = record;
    record = same;
    EXPECT_EQ(record.GetAll(), array);
    EXPECT_EQ(ValuesOf(record), (std::vector<double>{2.385, -4.5}));
}

TEST(Record, ResizeToTheSameSizeKeepsTheContents) {
    Record record = Filled({2.385, -4.5});
    const double* const array = record.GetAll();
    EXPECT_TRUE(record.Resize(2));
    EXPECT_EQ(record.GetAll(), array);
    EXPECT_EQ(ValuesOf(record), (std::vector<double>{2.385, -4.5}));
}

TEST(Record, ResizeToANegativeSizeEmptiesAndSucceeds) {
    Record record(4);
    EXPECT_TRUE(record.Resize(-3));
    EXPECT_EQ(record.Size(), 0);
    EXPECT_EQ(record.GetAll(), nullptr);
    EXPECT_TRUE(record.Resize(INT_MIN));
    EXPECT_EQ(record.Size(), 0);
}

TEST(Record, ResizeGivesRoomForTheNewSize) {
    Record record(2);
    EXPECT_TRUE(record.Resize(1000));
    EXPECT_EQ(record.Size(), 1000);
    for (int i = 0; i < 1000; ++i) {
        record[i] = i;
    }
    EXPECT_EQ(record[999], 999.0);
    EXPECT_TRUE(record.Resize(1));
    EXPECT_EQ(record.Size(), 1);
}

TEST(Record, ElementsAreThoseOfTheArray) {
    Record record(3);
    record[2] = 2.385;
    EXPECT_EQ(record.GetAll()[2], 2.385);
    record.GetAll()[0] = -1.5;
    const Record& constant = record;
    EXPECT_EQ(constant[0], -1.5);
    EXPECT_EQ(constant.GetAll(), record.GetAll());
    EXPECT_TRUE((std::is_same_v<decltype(constant[0]), double>));
}

TEST(Record, IsAPointerAndASizeAndNeverThrows) {
    struct Layout {
        double* data;
        int size;
    };
    EXPECT_EQ(sizeof(Record), sizeof(Layout));
    EXPECT_TRUE(std::is_nothrow_default_constructible_v<Record>);
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<Record>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<Record>);
}

}  // namespace
