#include "hooks/ForeignJson.h"

#include <vector>

namespace tovrin::ForeignJson {
namespace {

using nlohmann::json;

// Builds the document like the library's own parser, but stops at the first value that could
// not be kept: too deep, a key given twice (the library would keep only the last), or a number
// whose text the library would print differently (beyond 64 bits, "1e5", "1.50").
class StrictBuilder final : public nlohmann::json_sax<json> {
public:
    json root;
    std::optional<ReadProblem> problem;

    bool null() override { return put(nullptr); }
    bool boolean(bool value) override { return put(value); }
    bool number_integer(number_integer_t value) override { return put(value); }
    bool number_unsigned(number_unsigned_t value) override { return put(value); }
    bool number_float(number_float_t value, const string_t& text) override {
        json number(value);
        if (number.dump() != text) return refuse(ReadProblem::Kind::inexactNumber, text);
        return put(std::move(number));
    }
    bool string(string_t& value) override { return put(std::move(value)); }
    bool binary(binary_t&) override { return refuse(ReadProblem::Kind::notJSON); }

    bool start_object(std::size_t) override { return open(json::object()); }
    bool key(string_t& name) override {
        json& object = *m_open.back();
        if (object.contains(name)) return refuse(ReadProblem::Kind::duplicateKey, name);
        m_slot = &object[name];
        return true;
    }
    bool end_object() override { return close(); }
    bool start_array(std::size_t) override { return open(json::array()); }
    bool end_array() override { return close(); }

    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override {
        return refuse(ReadProblem::Kind::notJSON);
    }

private:
    // Where the next value goes; containers stay in place while they are open.
    json* place(json value) {
        if (m_open.empty()) {
            root = std::move(value);
            return &root;
        }
        json& container = *m_open.back();
        if (container.is_array()) {
            container.push_back(std::move(value));
            return &container.back();
        }
        *m_slot = std::move(value);
        return m_slot;
    }
    bool put(json value) {
        place(std::move(value));
        return true;
    }
    bool open(json container) {
        if (m_open.size() >= maxDepth) return refuse(ReadProblem::Kind::tooDeep);
        m_open.push_back(place(std::move(container)));
        return true;
    }
    bool close() {
        m_open.pop_back();
        return true;
    }
    bool refuse(ReadProblem::Kind kind, std::string detail = {}) {
        if (!problem) problem = ReadProblem{kind, std::move(detail)};
        return false;
    }

    std::vector<json*> m_open;
    json* m_slot = nullptr;
};

void indent(std::string& out, std::size_t depth) {
    out.append(depth * 2, ' ');
}

// Recursion is bounded by maxDepth on read; the template adds a few levels at most.
bool print(const json& value, std::size_t depth, std::string& out, std::size_t limit) {
    if (out.size() > limit) return false;
    const bool isObject = value.is_object();
    if (!(isObject || value.is_array()) || value.empty()) {
        out += value.dump(); // the library's own spelling of scalars and of {} and []
        return true;
    }
    out += isObject ? "{\n" : "[\n";
    bool first = true;
    for (auto it = value.begin(); it != value.end(); ++it) {
        if (!first) out += ",\n";
        first = false;
        indent(out, depth + 1);
        if (isObject) {
            out += json(it.key()).dump();
            out += ": ";
        }
        if (!print(it.value(), depth + 1, out, limit)) return false;
    }
    out += '\n';
    indent(out, depth);
    out += isObject ? '}' : ']';
    return true;
}

} // namespace

Result<json, ReadProblem> read(std::string_view text) {
    using R = Result<json, ReadProblem>;
    if (text.size() > maxReadBytes) return R::failure({ReadProblem::Kind::tooLarge, {}});
    StrictBuilder builder;
    const bool parsed = json::sax_parse(text, &builder, json::input_format_t::json, /*strict=*/true,
                                        /*ignore_comments=*/false);
    if (!parsed || builder.problem)
        return R::failure(builder.problem.value_or(ReadProblem{ReadProblem::Kind::notJSON, {}}));
    if (!builder.root.is_object())
        return R::failure({ReadProblem::Kind::notAnObject, builder.root.type_name()});
    return std::move(builder.root);
}

std::string quoted(const std::string& text) {
    std::string shown = json(text).dump(-1, ' ', true, json::error_handler_t::replace);
    return shown.size() > 60 ? shown.substr(0, 56) + "…\"" : shown;
}

Result<std::string, PrintProblem> pretty(const json& document, std::size_t limit) {
    using R = Result<std::string, PrintProblem>;
    std::string out;
    try {
        if (!print(document, 0, out, limit) || out.size() + 1 > limit)
            return R::failure(PrintProblem::tooLarge);
    } catch (const json::exception&) {
        return R::failure(PrintProblem::notUTF8);
    }
    out += '\n';
    return out;
}

} // namespace tovrin::ForeignJson
