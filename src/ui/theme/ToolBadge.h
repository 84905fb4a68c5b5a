#pragma once

#include <QWidget>
#include <string>

namespace tovrin {

// A tool's square picture: its icon when one is found, else a rounded tile in the tool's tint with
// its mark or symbol in white.
class ToolBadge : public QWidget {
public:
    ToolBadge(const std::string& tool, int size, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::string m_tool;
    int m_size;
};

} // namespace tovrin
