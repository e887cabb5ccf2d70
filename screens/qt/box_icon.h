#pragma once

#include <QIcon>
#include <QStyle>

namespace zentrel::view {

/// The mark of a message box: a disc with "i", "?", "!" or a cross in the theme's colours. An empty
/// icon for any other picture.
QIcon BoxIcon(QStyle::StandardPixmap picture);

} // namespace zentrel::view
