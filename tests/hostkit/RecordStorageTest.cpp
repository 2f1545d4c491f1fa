#include "hostkit/sessions/PromisedFields.h"
#include "hostkit/sessions/RecordStorage.h"

#include <gtest/gtest.h>

using namespace hostkit;

namespace {

std::uint8_t* bytes(RecordStorage& record) { return static_cast<std::uint8_t*>(record.data()); }

TEST(RecordStorage, ARecordIsZeroed) {
    HostRecord<imFileInfoRec8> record;
    EXPECT_EQ(std::count(bytes(record), bytes(record) + record.size(), 0), 5373);
}

TEST(RecordStorage, ARecordOfANewerHostIsLonger) { EXPECT_EQ(HostRecord<imFileInfoRec8>(5376).size(), 5376u); }

TEST(RecordStorage, ARecordIsNeverShorterThanItsType) { EXPECT_EQ(HostRecord<imFileInfoRec8>(10).size(), 5373u); }

TEST(RecordStorage, NeighbouringChangesAreOneRange) {
    RecordStorage record(100);
    record.remember();
    bytes(record)[3] = bytes(record)[4] = bytes(record)[9] = 1;
    EXPECT_EQ(record.changes(), (std::vector<ByteRange>{{3, 2}, {9, 1}}));
}

TEST(RecordStorage, BytesSetBeforeTheCallAreNoChange) {
    RecordStorage record(100);
    bytes(record)[3] = 7;
    record.remember();
    EXPECT_EQ(record.changes(), std::vector<ByteRange>{});
}

TEST(RecordStorage, AByteAfterTheRecordDamagesTheGuards) {
    RecordStorage record(99);
    bytes(record)[99] = 0;
    EXPECT_FALSE(record.guardsAreIntact());
}

TEST(RecordStorage, AByteBeforeTheRecordDamagesTheGuards) {
    RecordStorage record(99);
    bytes(record)[-1] = 0;
    EXPECT_FALSE(record.guardsAreIntact());
}

TEST(RecordStorage, ACopyKeepsContentAndDamage) {
    RecordStorage record(99);
    bytes(record)[5] = 42;
    bytes(record)[99] = 0;
    RecordStorage copy = record;
    EXPECT_EQ(bytes(copy)[5], 42);
    EXPECT_FALSE(copy.guardsAreIntact());
}

TEST(RecordStorage, RangesAreDescribedByTheirFirstAndLastByte) {
    EXPECT_EQ(describe({{2, 4}, {34, 1}}), "2-5 34");
    EXPECT_EQ(describe({}), "nothing");
}

TEST(PromisedFields, TheImportersFieldsAreLeftOut) {
    EXPECT_EQ(beyondPromise(imGetInfo8, {{0, 2}, {186, 12}}), std::vector<ByteRange>{});
}

TEST(PromisedFields, ARangePastAFieldIsCutToTheRest) {
    EXPECT_EQ(beyondPromise(imInit, {{50, 10}}), (std::vector<ByteRange>{{50, 2}, {56, 4}}));
}

TEST(PromisedFields, NothingOfAFrameRequestIsTheImporters) {
    EXPECT_EQ(beyondPromise(imGetSourceVideo, {{12, 8}}), (std::vector<ByteRange>{{12, 8}}));
}

TEST(PromisedFields, WhatNewerHostsAddedIsTheHosts) {
    EXPECT_EQ(beyondPromise(imGetInfo8, {{5373, 3}}), (std::vector<ByteRange>{{5373, 3}}));
}

}  // namespace
