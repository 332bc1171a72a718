// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// A progress line on standard error for long work: shown only when the input is over 64 MiB, rewritten
// in place each time the percentage changes, and ended with a line feed when the work is done.

#include <QString>
#include <QTextStream>

#include <algorithm>

class ProgressLine
{
public:
    /// Inputs up to this size finish quickly enough to need no progress.
    static constexpr quint64 Threshold = quint64(64) << 20;

    ProgressLine(QTextStream &err, QString label, quint64 total)
        : err(err), label(std::move(label)), total(total), shown(total > Threshold)
    {
    }
    ~ProgressLine()
    {
        if (percent >= 0)
            err << '\n' << Qt::flush;
    }
    ProgressLine(const ProgressLine &) = delete;
    ProgressLine &operator=(const ProgressLine &) = delete;

    /// update: \a done of the total is done.
    void update(quint64 done)
    {
        const int now = shown ? int(std::min<quint64>(100, done / std::max<quint64>(total / 100, 1))) : -1;
        if (now == percent)
            return;
        percent = now;
        err << '\r' << label << ": " << percent << '%' << Qt::flush;
    }

private:
    QTextStream &err;
    const QString label;
    const quint64 total;
    const bool shown;
    int percent = -1;
};
