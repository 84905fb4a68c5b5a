#include "ui/views/settings/QtSoundFileChooser.h"

#include "alerts/AlertSoundPickerViewModel.h"
#include "alerts/CustomSoundManager.h"
#include "ui/views/settings/SettingsRows.h"

#include <QFile>
#include <QFileDialog>
#include <QStringList>

namespace tovrin {

namespace {

// The dialog has no room for a message of its own, so the filter's description carries it.
QString soundFilter() {
    QStringList patterns;
    for (const std::string_view extension : CustomSoundManager::supportedExtensions)
        patterns << QStringLiteral("*.") + SettingsRows::qText(extension);
    return SettingsRows::qText(AlertSoundPickerText::chooserMessage) + QStringLiteral(" (") +
           patterns.join(QLatin1Char(' ')) + QLatin1Char(')');
}

} // namespace

QtSoundFileChooser::QtSoundFileChooser(QWidget* dialogParent) : m_dialogParent(dialogParent) {}

std::optional<std::filesystem::path> QtSoundFileChooser::chooseSoundFile() {
    QFileDialog dialog(m_dialogParent, SettingsRows::qText(AlertSoundPickerText::chooserTitle));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    // Read-only: the dialog offers no new folders and no renaming.
    dialog.setOption(QFileDialog::ReadOnly);
    dialog.setLabelText(QFileDialog::Accept, SettingsRows::qText(AlertSoundPickerText::chooserPrompt));
    dialog.setNameFilter(soundFilter());
    dialog.setWindowModality(Qt::ApplicationModal);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    const QStringList chosen = dialog.selectedFiles();
    if (chosen.isEmpty()) return std::nullopt;
    return std::filesystem::path(QFile::encodeName(chosen.first()).toStdString());
}

} // namespace tovrin
