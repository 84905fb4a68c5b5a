#include "ui/theme/ToolIcons.h"

#include "core/AtomicFile.h"
#include "core/KeyFile.h"
#include "core/UserPaths.h"
#include "ui/theme/SvgImage.h"
#include "ui/viewmodels/ToolIconSources.h"

#include <QIcon>
#include <QImageReader>
#include <QPainter>
#include <QSvgRenderer>
#include <filesystem>
#include <map>

namespace tovrin {

namespace {

// Installed icons are asked for at this size; badges draw them smaller, smoothly scaled.
constexpr int installedIconSide = 128;
// The mark is rendered once, large enough for any badge, then scaled down.
constexpr int logoSide = 96;

QString qPath(const std::filesystem::path& path) {
    return QString::fromStdString(path.string());
}

std::optional<QPixmap> loaded(const QString& path) {
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QImage image = reader.read();
    if (image.isNull()) return std::nullopt;
    return QPixmap::fromImage(image);
}

std::optional<QPixmap> iconNamed(const std::string& iconValue) {
    const QString name = QString::fromStdString(iconValue);
    const QIcon icon = std::filesystem::path(iconValue).is_absolute() ? QIcon(name) : QIcon::fromTheme(name);
    if (icon.isNull()) return std::nullopt;
    const QPixmap image = icon.pixmap(installedIconSide, installedIconSide);
    if (image.isNull()) return std::nullopt;
    return image;
}

std::optional<std::string> iconOfDesktopFile(const std::filesystem::path& file) {
    const auto text = readWholeFile(file);
    if (!text) return std::nullopt;
    const auto icon = KeyFile::value(KeyFile::group(text.value(), "Desktop Entry"), "Icon");
    if (!icon || icon->empty()) return std::nullopt;
    return icon;
}

} // namespace

namespace AppIconProvider {

std::optional<QPixmap> icon(const std::string& tool) {
    static std::map<std::string, QPixmap> cache;
    if (const auto hit = cache.find(tool); hit != cache.end()) return hit->second;
    std::optional<QPixmap> found = userOverride(tool);
    if (!found) found = installedAppIcon(tool);
    if (found) cache.emplace(tool, *found);
    return found;
}

std::optional<QPixmap> userOverride(const std::string& tool) {
    const auto folder = ToolIconSources::overrideFolder(UserPaths::home());
    for (const auto& candidate : ToolIconSources::overrideCandidates(folder, tool)) {
        std::error_code error;
        if (!std::filesystem::is_regular_file(candidate, error)) continue;
        if (auto image = loaded(qPath(candidate))) return image;
    }
    return std::nullopt;
}

std::optional<QPixmap> installedAppIcon(const std::string& tool) {
    const auto& ids = ToolIconSources::desktopIds(tool);
    if (ids.empty()) return std::nullopt;
    const auto folders = UserPaths::applicationFolders();
    for (const std::string& id : ids) {
        for (const auto& folder : folders) {
            std::error_code error;
            const auto file = folder / (id + ".desktop");
            if (!std::filesystem::is_regular_file(file, error)) continue;
            if (const auto iconValue = iconOfDesktopFile(file)) {
                if (auto image = iconNamed(*iconValue)) return image;
            }
        }
    }
    return std::nullopt;
}

} // namespace AppIconProvider

namespace BrandLogoProvider {

std::optional<QImage> templateImage(const std::string& tool) {
    static std::map<std::string, QImage> cache;
    if (const auto hit = cache.find(tool); hit != cache.end()) return hit->second;
    const std::string_view svg = ToolIconSources::brandLogoSvg(tool);
    if (svg.empty()) return std::nullopt;
    QSvgRenderer renderer(QByteArray(svg.data(), static_cast<qsizetype>(svg.size())));
    const std::optional<QImage> mark = renderSvg(renderer, logoSide);
    if (mark) cache.emplace(tool, *mark);
    return mark;
}

} // namespace BrandLogoProvider

} // namespace tovrin
