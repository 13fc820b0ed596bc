#include "shell/PathText.h"

#include <QFile>

namespace quoril {

void PathText::SetPath(const std::string& Path) {
    Given = Path;
    setText(QFile::decodeName(Given.c_str()));
    // The end of a path says more than its beginning.
    setCursorPosition(static_cast<int>(text().size()));
}

std::string PathText::Path() const {
    return text() == QFile::decodeName(Given.c_str()) ? Given
                                                      : QFile::encodeName(text()).toStdString();
}

} // namespace quoril
