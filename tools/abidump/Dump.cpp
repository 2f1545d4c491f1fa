#include "abidump/Dump.h"

#include "abidump/Tables.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace abidump {

namespace {

void print(std::ostream& out, const std::vector<Type>& types) {
    out << "\n# Basic types: bytes, name\n";
    for (const Type& type : types) {
        out << std::setw(8) << type.size << "  " << type.name << "\n";
    }
}

void print(std::ostream& out, const Record& record) {
    out << "\n" << record.name << ": " << record.size << " bytes\n";
    for (const Member& member : record.members) {
        if (member.isThere) {
            out << std::setw(8) << member.offset << std::setw(6) << member.size << "  " << member.name << "\n";
        } else {
            out << std::setw(14) << "missing" << "  " << member.name << "\n";
        }
    }
}

void print(std::ostream& out, const char* title, const std::vector<Record>& records) {
    out << "\n# " << title << ": offset, bytes, member\n";
    for (const Record& record : records) {
        print(out, record);
    }
}

void print(std::ostream& out, const std::vector<Suite>& suites) {
    out << "\n# Suites: version, name, table\n";
    for (const Suite& suite : suites) {
        out << std::setw(8) << suite.version << "  \"" << suite.name << "\"  " << suite.table << "\n";
    }
}

void print(std::ostream& out, const char* title, const std::vector<Number>& numbers) {
    out << "\n# " << title << "\n";
    for (const Number& number : numbers) {
        out << std::setw(12) << number.value << "  " << number.name << "\n";
    }
}

// Four-character codes, first character in the lowest byte.
void printCodes(std::ostream& out, const char* title, const std::vector<Number>& codes) {
    out << "\n# " << title << "\n" << std::hex << std::setfill('0');
    for (const Number& code : codes) {
        out << "0x" << std::setw(8) << code.value << "  " << code.name << "\n";
    }
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);) {
        line.erase(std::remove(line.begin(), line.end(), '\r'), line.end());
        lines.push_back(line);
    }
    return lines;
}

}  // namespace

std::string dumpText() {
    std::ostringstream out;
    out << "# The host's binary interface, as " << kHeaders << " have it\n";
    out << "\n# Interface version\n" << std::setw(8) << kInterfaceVersion << "\n";
    print(out, basicTypes());
    print(out, "Basic records", basicRecords());
    print(out, "Tables reached from the standard parameters", callbackTables());
    print(out, "Tables of suites", suiteTables());
    print(out, suites());
    print(out, "Importer records", importerRecords());
    print(out, "Records of asynchronous importers", asyncRecords());
    print(out, "Selectors", importerSelectors());
    print(out, "Results", importerResults());
    print(out, "Selectors of asynchronous importers", asyncSelectors());
    print(out, "Results of asynchronous importers", asyncResults());
    print(out, "Speakers", channelLabels());
    print(out, "Types of sound samples", sampleTypes());
    print(out, "Other numbers", otherNumbers());
    printCodes(out, "Pixel formats", pixelFormats());
    return out.str();
}

std::string differences(const std::string& wanted, const std::string& found) {
    const std::vector<std::string> before = linesOf(wanted);
    const std::vector<std::string> after = linesOf(found);
    std::string text;
    std::string record;             // the line of the record that the following lines belong to
    std::string toldRecord;
    for (std::size_t i = 1; i < std::max(before.size(), after.size()); ++i) {
        const std::string old = i < before.size() ? before[i] : "";
        const std::string now = i < after.size() ? after[i] : "";
        if (!old.empty() && old.front() != ' ' && old.front() != '0') {
            record = old;
        }
        if (old == now) {
            continue;
        }
        if (record != toldRecord && record != old) {
            text.append("  ").append(record).append("\n");
        }
        toldRecord = record;
        text.append("- ").append(old).append("\n+ ").append(now).append("\n");
    }
    return text;
}

}  // namespace abidump
