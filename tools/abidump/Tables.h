// Everything that the headers define, table by table, in the order of the headers.
#pragma once

#include "abidump/Layout.h"

namespace abidump {

std::vector<Type> basicTypes();

std::vector<Record> basicRecords();
std::vector<Record> callbackTables();
std::vector<Record> suiteTables();
std::vector<Record> importerRecords();
std::vector<Record> asyncRecords();

std::vector<Suite> suites();

std::vector<Number> importerSelectors();
std::vector<Number> importerResults();
std::vector<Number> asyncSelectors();
std::vector<Number> asyncResults();
std::vector<Number> channelLabels();
std::vector<Number> sampleTypes();
std::vector<Number> otherNumbers();
std::vector<Number> pixelFormats();

}  // namespace abidump
