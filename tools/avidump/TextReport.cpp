#include "avidump/Report.h"

#include <sstream>

namespace avidump {

namespace {

std::string plain(const Report& value) {
    if (value.is_null()) {
        return "none";
    }
    return value.is_string() ? value.get<std::string>() : value.dump();
}

void writeErrorText(std::ostream& out, const std::string& text) {
    out << "errorText:" << (text.empty() ? " none\n" : "\n");
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        out << "  " << line << '\n';
    }
}

void writeChunkTree(std::ostream& out, const Report& nodes) {
    out << "chunkTree: position, size\n";
    for (const Report& node : nodes) {
        out << std::string(2 + 2 * node["depth"].get<std::size_t>(), ' ') << plain(node["id"]);
        if (node.contains("listType")) {
            out << ' ' << plain(node["listType"]);
        }
        out << "  " << node["position"] << ", " << node["size"] << '\n';
    }
}

// Writes names and plain values, one per line; arrays have one line per element.
void writeFields(std::ostream& out, const std::string& indent, const Report& fields) {
    for (const auto& [name, value] : fields.items()) {
        if (value.is_object()) {
            out << indent << name << ":\n";
            writeFields(out, indent + "  ", value);
        } else if (value.is_array()) {
            out << indent << name << ": " << value.size() << '\n';
            for (const Report& element : value) {
                out << indent << "  " << element.dump() << '\n';
            }
        } else {
            out << indent << name << ": " << plain(value) << '\n';
        }
    }
}

// "chunk <stream number> <index> <position> <size> <start byte> <key frame: k or ->"
void writeChunks(std::ostream& out, const Report& stream) {
    std::size_t index = 0;
    for (const Report& chunk : stream["chunks"]) {
        out << "chunk " << stream["streamNumber"] << ' ' << index++ << ' ' << chunk[0] << ' ' << chunk[1] << ' '
            << chunk[2] << (chunk[3].get<bool>() ? " k\n" : " -\n");
    }
}

void writeStream(std::ostream& out, const Report& stream) {
    Report fields = stream;
    fields.erase("chunks");
    fields.erase("streamNumber");
    out << "stream " << stream["streamNumber"] << ":\n";
    writeFields(out, "  ", fields);
    if (stream.contains("chunks")) {
        writeChunks(out, stream);
    }
}

}  // namespace

std::string textOf(const Report& report) {
    std::ostringstream out;
    for (const auto& [name, value] : report.items()) {
        if (name == "errorText") {
            writeErrorText(out, value.get<std::string>());
        } else if (name == "chunkTree") {
            writeChunkTree(out, value);
        } else if (name == "streams") {
            for (const Report& stream : value) {
                writeStream(out, stream);
            }
        } else {
            writeFields(out, "", Report{{name, value}});
        }
    }
    return out.str();
}

}  // namespace avidump
