#pragma once

// Lists of URLs as programs hand them to each other (text/uri-list): one a line, ended by CR LF or LF, with
// comments after "#". Private to the platform layer.

#include <QByteArrayView>
#include <QString>

#include <vector>

/// The first URL as it stands; empty if there is none, or it is not valid UTF-8.
QString firstUrlIn(QByteArrayView list);

/// The paths that "file" URLs of the list name on this computer: those without a host and those on
/// "localhost" or `host`. All are absolute and without NUL. Letters, blanks and per cent signs may stand in
/// the URLs as they are, not encoded. What is not such a URL, or would not name a path in valid UTF-8, is
/// left out, as is what has a query or fragment, since it would name another file.
std::vector<QString> fileNamesIn(QByteArrayView list, const QString& host);
