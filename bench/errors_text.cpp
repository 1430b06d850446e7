#include "bench/errors_text.h"

#include <cstdint>
#include <iterator>
#include <random>

namespace cvlog::bench {

namespace {

struct Kind {
    const char* severity;
    const char* code;
    int weight; // of 100
    const char* message;
};

// "%" is a name of the program that is compiled.
constexpr Kind kKinds[] = {
    {"Warning", "W1001", 19, "cast from type '%' to type '%' throws away a qualifier of its target"},
    {"Warning", "W1001", 12, "cast to '%' gives alignment that '%' did not have"},
    {"Warning", "W1002", 25, "conversion to '%' from '%' may change the sign of the result"},
    {"Warning", "W1003", 20, "conversion from '%' to '%' may change value"},
    {"Warning", "W1004", 6, "'%' is used here before anything was assigned to it"},
    {"Warning", "W1013", 4, "this statement goes on into the next case of '%'"},
    {"Warning", "W1017", 3, "argument '%' is not used"},
    {"Note", "I1011", 5, "'%' was declared here"},
    {"Error", "E1009", 4, "'%' was not declared in this scope; is '%' meant?"},
    {"Error", "E1016", 2, "a file named in an inclusion is missing: %.h"},
};

constexpr const char* kNames[] = {"int",           "long int",  "unsigned int",    "long unsigned int",
                                  "const char *",  "char *",    "size_t",          "struct node_list *",
                                  "unsigned char", "ptrdiff_t", "current_context", "parse_attribute_value",
                                  "buffer_length", "hash_slot", "void *",          "const unsigned char *"};

class Writer {
public:
    std::string write(int lines, bool hidden) {
        for (int line = 0; line < lines; ++line) {
            if (linesOfObject_-- == 0) nextObject();
            append(hidden ? hiddenKind() : anyKind());
        }
        return std::move(text_);
    }

private:
    int below(int limit) { return static_cast<int>(random_() % static_cast<std::uint32_t>(limit)); }

    // Messages about one object come together.
    void nextObject() {
        object_ = below(kErrorsObjects);
        linesOfObject_ = below(40);
        place_ = 1;
    }
    static const Kind& hiddenKind() { return kKinds[7]; }
    const Kind& anyKind() {
        int at = below(100);
        const Kind* kind = kKinds;
        while (at >= kind->weight) at -= (kind++)->weight;
        return *kind;
    }
    void field(std::string_view value) { text_.append(1, '"').append(value).append("\" "); }
    void append(const Kind& kind) {
        place_ += 1 + below(60);
        field(errorsType(object_));
        field(errorsObject(object_));
        field(std::to_string(place_));
        field(std::to_string(1 + below(80)));
        field(kind.severity);
        field(kind.code);
        for (const char byte : std::string_view(kind.message))
            if (byte == '%')
                text_ += kNames[below(static_cast<int>(std::size(kNames)))];
            else
                text_ += byte;
        text_ += "\r\n";
    }

    std::mt19937 random_{20260314};
    std::string text_;
    int object_ = 0;
    int linesOfObject_ = 0;
    int place_ = 1;
};

} // namespace

std::string errorsText(int lines) { return Writer().write(lines, false); }

std::string hiddenErrorsText(int lines) { return Writer().write(lines, true); }

std::string errorsObject(int number) {
    return "src/part_" + std::to_string(100 + number) + (number % 5 == 0 ? ".h" : ".c");
}

std::string_view errorsType(int object) { return object % 5 == 0 ? "Header" : "Source"; }

} // namespace cvlog::bench
