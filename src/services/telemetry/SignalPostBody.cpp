#include "services/telemetry/SignalPostBody.h"

#include "core/Iso8601.h"

namespace tovrin {
namespace {

// 2001-01-01T00:00:00Z, where the cache's date count starts.
constexpr double referenceDateSeconds = 978307200;

nlohmann::ordered_json jsonWithDate(const SignalPostBody& body, nlohmann::ordered_json date) {
    nlohmann::ordered_json json;
    json["receivedAt"] = std::move(date);
    json["appID"] = body.appID;
    json["clientUser"] = body.clientUser;
    json["sessionID"] = body.sessionID;
    json["type"] = body.type;
    if (body.floatValue) json["floatValue"] = *body.floatValue;
    json["payload"] = body.payload;
    json["isTestMode"] = body.isTestMode;
    return json;
}

const std::string* stringAt(const nlohmann::json& json, const char* key) {
    const auto it = json.find(key);
    return it != json.end() && it->is_string() ? it->get_ptr<const std::string*>() : nullptr;
}

} // namespace

nlohmann::ordered_json wireJson(const SignalPostBody& body) {
    std::string date = formatIso8601(body.receivedAt);
    date.pop_back(); // the trailing "Z": the service reads a numeric zone
    return jsonWithDate(body, date + "+0000");
}

std::string encodeBatch(const std::vector<SignalPostBody>& batch) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const auto& body : batch)
        array.push_back(wireJson(body));
    return array.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

nlohmann::ordered_json cacheJson(const SignalPostBody& body) {
    const double since1970 = Seconds(body.receivedAt.time_since_epoch()).count();
    return jsonWithDate(body, since1970 - referenceDateSeconds);
}

std::optional<SignalPostBody> signalFromCacheJson(const nlohmann::json& json) {
    if (!json.is_object()) return std::nullopt;
    const auto date = json.find("receivedAt");
    const auto payload = json.find("payload");
    const auto* appID = stringAt(json, "appID");
    const auto* clientUser = stringAt(json, "clientUser");
    const auto* sessionID = stringAt(json, "sessionID");
    const auto* type = stringAt(json, "type");
    const auto* isTestMode = stringAt(json, "isTestMode");
    if (date == json.end() || !date->is_number() || payload == json.end() || !payload->is_object() ||
        !appID || !clientUser || !sessionID || !type || !isTestMode)
        return std::nullopt;

    SignalPostBody body{.receivedAt = addSeconds(TimePoint{}, date->get<double>() + referenceDateSeconds),
                        .appID = *appID,
                        .clientUser = *clientUser,
                        .sessionID = *sessionID,
                        .type = *type,
                        .floatValue = std::nullopt,
                        .payload = {},
                        .isTestMode = *isTestMode};
    if (const auto value = json.find("floatValue"); value != json.end()) {
        if (!value->is_number()) return std::nullopt;
        body.floatValue = value->get<double>();
    }
    for (const auto& [key, value] : payload->items()) {
        if (!value.is_string()) return std::nullopt;
        body.payload.emplace(key, value.get<std::string>());
    }
    return body;
}

} // namespace tovrin
