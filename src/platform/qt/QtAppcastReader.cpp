#include "platform/qt/QtAppcastReader.h"

#include <QByteArray>
#include <QXmlStreamReader>

namespace tovrin {
namespace {

constexpr QLatin1String releaseNamespace("http://www.andymatuschak.org/xml-namespaces/sparkle");

bool isPlain(const QXmlStreamReader& xml, QStringView name) {
    return xml.namespaceUri().isEmpty() && xml.name() == name;
}

bool isRelease(const QXmlStreamReader& xml, QStringView name) {
    return xml.namespaceUri() == releaseNamespace && xml.name() == name;
}

std::string text(QStringView value) {
    return value.trimmed().toString().toStdString();
}

void readEnclosure(QXmlStreamReader& xml, AppcastItem& item) {
    const QXmlStreamAttributes attributes = xml.attributes();
    item.url = text(attributes.value(QLatin1String("url")));
    bool ok = false;
    const qulonglong length = attributes.value(QLatin1String("length")).trimmed().toULongLong(&ok);
    if (ok) item.length = length;
    item.signature = text(attributes.value(releaseNamespace, QLatin1String("edSignature")));
    if (item.version.empty())
        item.version = text(attributes.value(releaseNamespace, QLatin1String("version")));
    if (item.shortVersion.empty())
        item.shortVersion = text(attributes.value(releaseNamespace, QLatin1String("shortVersionString")));
    xml.skipCurrentElement();
}

AppcastItem readItem(QXmlStreamReader& xml) {
    AppcastItem item;
    while (xml.readNextStartElement()) {
        if (isRelease(xml, u"version"))
            item.version = text(xml.readElementText(QXmlStreamReader::IncludeChildElements));
        else if (isRelease(xml, u"shortVersionString"))
            item.shortVersion = text(xml.readElementText(QXmlStreamReader::IncludeChildElements));
        else if (isPlain(xml, u"description"))
            item.notes = xml.readElementText(QXmlStreamReader::IncludeChildElements).trimmed().toStdString();
        else if (isPlain(xml, u"enclosure"))
            readEnclosure(xml, item);
        else
            xml.skipCurrentElement();
    }
    return item;
}

void readChannel(QXmlStreamReader& xml, std::vector<AppcastItem>& items) {
    while (xml.readNextStartElement()) {
        if (isPlain(xml, u"item"))
            items.push_back(readItem(xml));
        else
            xml.skipCurrentElement();
    }
}

} // namespace

Result<std::vector<AppcastItem>, std::string> QtAppcastReader::read(std::string_view feed) const {
    using R = Result<std::vector<AppcastItem>, std::string>;
    QXmlStreamReader xml(QByteArray(feed.data(), static_cast<qsizetype>(feed.size())));
    std::vector<AppcastItem> items;
    if (xml.readNextStartElement()) {
        if (!isPlain(xml, u"rss")) return R::failure("the document is not an RSS feed.");
        while (xml.readNextStartElement()) {
            if (isPlain(xml, u"channel"))
                readChannel(xml, items);
            else
                xml.skipCurrentElement();
        }
    }
    // Whatever follows the feed must be well-formed too.
    while (!xml.atEnd())
        xml.readNext();
    if (xml.hasError()) {
        return R::failure("line " + std::to_string(xml.lineNumber()) + ", column " +
                          std::to_string(xml.columnNumber()) + ": " + xml.errorString().toStdString());
    }
    return items;
}

} // namespace tovrin
