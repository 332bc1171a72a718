// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VTTypeIdentifierTable_p.h"

namespace {

// Extend by adding rows; tests check that every MIME type here is one the MIME database knows (or a
// clipboard-only type), so a typo shows at once.
constexpr VTTypeIdentifierRow Rows[] = {
    // Text
    {"public.plain-text", "text/plain", ""},
    {"public.utf8-plain-text", "text/plain;charset=utf-8", ""},
    {"public.utf16-plain-text", "text/plain;charset=utf-16", ""},
    {"public.rtf", "text/rtf", ""},
    {"public.html", "text/html", ""},
    {"public.xml", "application/xml", ""},
    {"public.json", "application/json", ""},
    {"public.comma-separated-values-text", "text/csv", ""},
    {"public.tab-separated-values-text", "text/tab-separated-values", ""},
    {"public.vcard", "text/vcard", ""},
    {"public.calendar-event", "text/calendar", "ics"},
    {"public.log", "text/x-log", ""},
    {"public.css", "text/css", ""},
    {"net.daringfireball.markdown", "text/markdown", ""},
    {"com.apple.property-list", "application/x-plist", "plist"},
    // Links: on Linux desktops a dragged or copied link is a URI list
    {"public.url", "text/uri-list", ""},
    {"public.file-url", "text/uri-list", ""},
    // Source code and scripts
    {"public.c-source", "text/x-csrc", ""},
    {"public.c-header", "text/x-chdr", ""},
    {"public.c-plus-plus-source", "text/x-c++src", ""},
    {"public.c-plus-plus-header", "text/x-c++hdr", ""},
    {"public.python-script", "text/x-python", ""},
    {"public.shell-script", "application/x-shellscript", ""},
    {"com.netscape.javascript-source", "text/javascript", ""},
    // Images
    {"public.png", "image/png", ""},
    {"public.jpeg", "image/jpeg", ""},
    {"com.compuserve.gif", "image/gif", ""},
    {"public.tiff", "image/tiff", ""},
    {"com.microsoft.bmp", "image/bmp", ""},
    {"com.microsoft.ico", "image/vnd.microsoft.icon", ""},
    {"org.webmproject.webp", "image/webp", ""},
    {"public.heic", "image/heic", ""},
    {"public.svg-image", "image/svg+xml", ""},
    {"com.apple.icns", "image/x-icns", ""},
    {"com.adobe.pdf", "application/pdf", ""},
    {"com.adobe.postscript", "application/postscript", ""},
    {"com.adobe.encapsulated-postscript", "image/x-eps", ""},
    // Audio and video
    {"public.mp3", "audio/mpeg", ""},
    {"public.mpeg-4-audio", "audio/mp4", ""},
    {"public.aac-audio", "audio/aac", ""},
    {"com.microsoft.waveform-audio", "audio/wav", ""},
    {"public.aiff-audio", "audio/x-aiff", ""},
    {"org.xiph.flac", "audio/flac", ""},
    {"public.mpeg-4", "video/mp4", ""},
    {"public.mpeg", "video/mpeg", ""},
    {"com.apple.quicktime-movie", "video/quicktime", ""},
    {"public.avi", "video/x-msvideo", ""},
    // Archives
    {"public.zip-archive", "application/zip", ""},
    {"org.gnu.gnu-zip-archive", "application/gzip", ""},
    {"public.tar-archive", "application/x-tar", ""},
    {"public.bzip2-archive", "application/x-bzip2", ""},
    {"org.7-zip.7-zip-archive", "application/x-7z-compressed", ""},
    {"com.apple.disk-image-udif", "application/x-apple-diskimage", ""},
    // Documents and fonts
    {"com.microsoft.word.doc", "application/msword", ""},
    {"com.microsoft.excel.xls", "application/vnd.ms-excel", ""},
    {"com.microsoft.powerpoint.ppt", "application/vnd.ms-powerpoint", ""},
    {"org.openxmlformats.wordprocessingml.document", "application/vnd.openxmlformats-officedocument.wordprocessingml.document", ""},
    {"org.openxmlformats.spreadsheetml.sheet", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet", ""},
    {"org.openxmlformats.presentationml.presentation", "application/vnd.openxmlformats-officedocument.presentationml.presentation", ""},
    {"org.oasis-open.opendocument.text", "application/vnd.oasis.opendocument.text", ""},
    {"org.oasis-open.opendocument.spreadsheet", "application/vnd.oasis.opendocument.spreadsheet", ""},
    {"org.oasis-open.opendocument.presentation", "application/vnd.oasis.opendocument.presentation", ""},
    {"public.truetype-ttf-font", "font/ttf", ""},
    {"public.opentype-font", "font/otf", ""},
    // Folders
    {"public.folder", "inode/directory", ""},
};

} // namespace

std::span<const VTTypeIdentifierRow> VTTypeIdentifierTable::rows()
{
    return Rows;
}
