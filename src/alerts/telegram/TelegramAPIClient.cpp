#include "alerts/telegram/TelegramAPIClient.h"

#include <cctype>
#include <cstdint>
#include <cstring>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>
#include <variant>
#include <vector>

namespace tovrin {
namespace {

using Json = nlohmann::json;

std::string redacted(std::string text, const std::string& token) {
    static const std::string mask = "<token>";
    if (token.empty()) return text;
    for (auto at = text.find(token); at != std::string::npos; at = text.find(token, at + mask.size()))
        text.replace(at, token.size(), mask);
    return text;
}

// Whether the text can be taken as a URL at all: http(s), printable ASCII, none of the characters
// that no URL may hold, and '%' only as the start of an escape.
bool isUsableUrl(const std::string& text) {
    if (!text.starts_with("https://") && !text.starts_with("http://")) return false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c <= 0x20 || c >= 0x7f || std::strchr("\"<>\\^`{|}", c)) return false;
        if (c == '%' && (i + 2 >= text.size() || !std::isxdigit(static_cast<unsigned char>(text[i + 1])) ||
                         !std::isxdigit(static_cast<unsigned char>(text[i + 2]))))
            return false;
    }
    return true;
}

// A reply whose shape doesn't fit; its text says where.
struct ShapeError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

const Json& member(const Json& object, const char* name, const std::string& path) {
    if (!object.is_object()) throw ShapeError(path + " is not an object");
    const auto it = object.find(name);
    if (it == object.end() || it->is_null()) throw ShapeError(path + "." + name + " is missing");
    return *it;
}

const Json* optionalMember(const Json& object, const char* name, const std::string& path) {
    if (!object.is_object()) throw ShapeError(path + " is not an object");
    const auto it = object.find(name);
    return it == object.end() || it->is_null() ? nullptr : &*it;
}

std::optional<std::string> optionalString(const Json& object, const char* name, const std::string& path) {
    const Json* value = optionalMember(object, name, path);
    if (!value) return std::nullopt;
    if (!value->is_string()) throw ShapeError(path + "." + name + " is not a string");
    return value->get<std::string>();
}

std::int64_t requiredInteger(const Json& object, const char* name, const std::string& path) {
    const Json& value = member(object, name, path);
    if (!value.is_number_integer() || (value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX))
        throw ShapeError(path + "." + name + " is not a 64-bit integer");
    return value.get<std::int64_t>();
}

struct TelegramUser {
    std::int64_t id = 0;
    std::optional<std::string> username;
    std::optional<std::string> firstName;
};

TelegramUser decodeUser(const Json& json, const std::string& path) {
    return {requiredInteger(json, "id", path), optionalString(json, "username", path),
            optionalString(json, "first_name", path)};
}

TelegramChat decodeChat(const Json& json, const std::string& path) {
    return {requiredInteger(json, "id", path), optionalString(json, "title", path),
            optionalString(json, "first_name", path), optionalString(json, "username", path)};
}

// Per update, the chat of its message; an update of any other kind has none.
std::vector<std::optional<TelegramChat>> decodeUpdates(const Json& json, const std::string& path) {
    if (!json.is_array()) throw ShapeError(path + " is not an array");
    std::vector<std::optional<TelegramChat>> chats;
    for (std::size_t i = 0; i < json.size(); ++i) {
        const std::string at = path + "[" + std::to_string(i) + "]";
        const Json* message = optionalMember(json[i], "message", at);
        if (!message) {
            chats.emplace_back();
            continue;
        }
        chats.emplace_back(decodeChat(member(*message, "chat", at + ".message"), at + ".message.chat"));
    }
    return chats;
}

// sendMessage's result is read only to tell a reply with a result from one without.
std::monostate decodeMessageResult(const Json& json, const std::string& path) {
    if (const Json* id = optionalMember(json, "message_id", path);
        id &&
        (!id->is_number_integer() || (id->is_number_unsigned() && id->get<std::uint64_t>() > INT64_MAX)))
        throw ShapeError(path + ".message_id is not a 64-bit integer");
    return {};
}

template <class T> using Decoder = T (*)(const Json&, const std::string&);

// The envelope's verdict on one answer: the decoded result or what went wrong.
template <class T>
Result<T, TelegramError> interpret(const std::optional<HttpResult>& answer, Decoder<T> decode) {
    using R = Result<T, TelegramError>;
    if (!answer) return R::failure(TelegramError::api("Bad request URL"));
    if (!*answer) return R::failure(TelegramError::transport(answer->error().description()));
    const HttpResponse& response = answer->value();
    if (!response.status) return R::failure(TelegramError::noResponse());
    const int status = *response.status;
    if (status == 401) return R::failure(TelegramError::unauthorized());

    bool ok = false;
    std::optional<T> result;
    std::optional<std::string> description;
    try {
        const Json envelope = Json::parse(response.body);
        const Json& okValue = member(envelope, "ok", "reply");
        if (!okValue.is_boolean()) throw ShapeError("reply.ok is not a boolean");
        ok = okValue.get<bool>();
        if (const Json* value = optionalMember(envelope, "result", "reply"))
            result = decode(*value, "reply.result");
        description = optionalString(envelope, "description", "reply");
    } catch (const Json::parse_error& e) {
        std::string what = e.what();
        // nlohmann prefixes "[json.exception.parse_error.101] "; the rest is for people.
        if (const auto end = what.find("] "); what.starts_with("[") && end != std::string::npos)
            what.erase(0, end + 2);
        return R::failure(TelegramError::decoding("The reply isn't valid JSON: " + what));
    } catch (const ShapeError& e) {
        return R::failure(TelegramError::decoding(std::string("The reply isn't in the expected format: ") +
                                                  e.what() + "."));
    }
    // The status plays no part here: a success envelope is a success under any status but 401.
    if (ok && result) return std::move(*result);
    return R::failure(TelegramError::api(description ? *description : "status " + std::to_string(status)));
}

// Texts that come from outside (the server, the transport) could echo the token.
TelegramError withoutToken(const TelegramError& error, const std::string& token) {
    switch (error.kind()) {
    case TelegramError::Kind::api:
        return TelegramError::api(redacted(error.detail(), token));
    case TelegramError::Kind::transport:
        return TelegramError::transport(redacted(error.detail(), token));
    case TelegramError::Kind::decoding:
        return TelegramError::decoding(redacted(error.detail(), token));
    default:
        return error;
    }
}

std::string botLabel(const TelegramUser& user) {
    if (user.username) return "@" + *user.username;
    if (user.firstName) return *user.firstName;
    return "bot";
}

} // namespace

std::string TelegramChat::displayName() const {
    if (title) return *title;
    if (firstName) return *firstName;
    if (username) return "@" + *username;
    return std::to_string(id);
}

TelegramAPIClient::TelegramAPIClient(HttpClient& http, MainLoop& loop, std::string baseUrl, Seconds timeout)
    : m_http(http), m_loop(loop), m_baseUrl(std::move(baseUrl)), m_timeout(timeout) {}

void TelegramAPIClient::call(const std::string& token, const std::string& method,
                             std::optional<std::string> body,
                             std::function<void(const std::optional<HttpResult>&)> answer) {
    // Plain concatenation, no escaping: a token that breaks the URL fails here, before any request.
    std::string url = m_baseUrl + "/bot" + token + "/" + method;
    if (!isUsableUrl(url)) {
        m_loop.post([answer = std::move(answer)] { answer(std::nullopt); });
        return;
    }
    HttpRequest request{
        .method = "GET", .url = std::move(url), .headers = {}, .body = std::nullopt, .timeout = m_timeout};
    if (body) {
        request.method = "POST";
        request.headers.emplace_back("Content-Type", "application/json");
        request.body = std::move(body);
    }
    m_http.send(std::move(request), [answer = std::move(answer)](HttpResult result) { answer(result); });
}

void TelegramAPIClient::verifyBot(const std::string& token, Completion<std::string> completion) {
    call(token, "getMe", std::nullopt,
         [token, completion = std::move(completion)](const std::optional<HttpResult>& answer) {
             auto user = interpret<TelegramUser>(answer, decodeUser);
             if (!user)
                 return completion(
                     Result<std::string, TelegramError>::failure(withoutToken(user.error(), token)));
             completion(botLabel(user.value()));
         });
}

void TelegramAPIClient::discoverChat(const std::string& token, Completion<TelegramChat> completion) {
    // No offset: nothing is confirmed or consumed, so linking can be repeated.
    call(token, "getUpdates", std::nullopt,
         [token, completion = std::move(completion)](const std::optional<HttpResult>& answer) {
             using R = Result<TelegramChat, TelegramError>;
             auto chats = interpret<std::vector<std::optional<TelegramChat>>>(answer, decodeUpdates);
             if (!chats) return completion(R::failure(withoutToken(chats.error(), token)));
             for (auto it = chats.value().rbegin(); it != chats.value().rend(); ++it) {
                 if (*it) return completion(**it);
             }
             completion(R::failure(TelegramError::noChat()));
         });
}

void TelegramAPIClient::sendMessage(const std::string& token, const std::string& chatID,
                                    const std::string& text, Completion<void> completion) {
    call(token, "sendMessage", sendMessageBody(chatID, text),
         [token, completion = std::move(completion)](const std::optional<HttpResult>& answer) {
             using R = Result<void, TelegramError>;
             auto sent = interpret<std::monostate>(answer, decodeMessageResult);
             completion(sent ? R() : R::failure(withoutToken(sent.error(), token)));
         });
}

std::string TelegramAPIClient::sendMessageBody(const std::string& chatID, const std::string& text) {
    try {
        return Json{{"chat_id", chatID}, {"text", text}}.dump();
    } catch (const Json::exception&) {
        return {}; // text that isn't UTF-8; an empty body still goes out as a POST
    }
}

} // namespace tovrin
