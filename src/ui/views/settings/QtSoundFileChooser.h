#pragma once

#include "alerts/SoundFileChoosing.h"

#include <QPointer>
#include <QWidget>

namespace tovrin {

// Asks for one sound file with the desktop's open dialog, modal over the given window.
class QtSoundFileChooser final : public SoundFileChoosing {
public:
    explicit QtSoundFileChooser(QWidget* dialogParent = nullptr);

    std::optional<std::filesystem::path> chooseSoundFile() override;

private:
    QPointer<QWidget> m_dialogParent;
};

} // namespace tovrin
