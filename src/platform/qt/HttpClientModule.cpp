#include "platform/qt/HttpClientModule.h"

#include "platform/qt/QtHttpClient.h"

extern "C" __attribute__((visibility("default"))) tovrin::HttpClient* tovrin_create_http_client() {
    return new tovrin::QtHttpClient();
}
