// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// VTChunkedSequence: a sequence kept in order by its user, stored as a list of chunks of at most
// MaximumChunk elements, so that inserting or erasing anywhere moves at most one chunk's elements (and,
// when a chunk splits or empties, the small list of chunks) instead of the whole sequence. Elements are
// reached through positions (chunk, offset) that stay valid until the next insertion or erasure.
//
// lowerBound() searches the last element of every chunk, kept in a contiguous list of its own, and then
// one chunk: both searches run over contiguous memory. Chunks split when they grow past MaximumChunk and
// go when they empty; they are not merged as they shrink.

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

template <typename T, std::size_t MaximumChunk = 256>
class VTChunkedSequence
{
    static_assert(MaximumChunk >= 2, "a full chunk splits in two non-empty halves");

public:
    // A place in the sequence; the end is {chunk count, 0}. No chunk is ever empty.
    struct Position
    {
        std::size_t chunk = 0;
        std::size_t offset = 0;
        friend bool operator==(const Position &, const Position &) = default;
    };

    [[nodiscard]] bool isEmpty() const { return m_chunks.empty(); }
    [[nodiscard]] std::size_t size() const { return m_size; }
    [[nodiscard]] Position begin() const { return {}; }
    [[nodiscard]] Position end() const { return {m_chunks.size(), 0}; }
    [[nodiscard]] bool isEnd(Position p) const { return p.chunk == m_chunks.size(); }

    [[nodiscard]] const T &at(Position p) const { return m_chunks[p.chunk][p.offset]; }
    [[nodiscard]] const T &front() const { return m_chunks.front().front(); }
    [[nodiscard]] const T &back() const { return m_lasts.back(); }

    [[nodiscard]] Position next(Position p) const
    {
        return ++p.offset < m_chunks[p.chunk].size() ? p : Position{p.chunk + 1, 0};
    }
    [[nodiscard]] bool hasPrevious(Position p) const { return p.chunk != 0 || p.offset != 0; }
    /// The position before \a p, which hasPrevious(); the end's is the last element's.
    [[nodiscard]] Position previous(Position p) const
    {
        if (p.offset != 0)
            return {p.chunk, p.offset - 1};
        return {p.chunk - 1, m_chunks[p.chunk - 1].size() - 1};
    }

    /// The first element for which \a isBefore answers false (the elements for which it answers true
    /// must come first), or the end.
    template <typename IsBefore>
    [[nodiscard]] Position lowerBound(IsBefore isBefore) const
    {
        // Appending in order, the common case, costs one comparison.
        if (m_lasts.empty() || isBefore(m_lasts.back()))
            return end();
        const auto chunk = std::partition_point(m_lasts.begin(), m_lasts.end(), isBefore);
        if (chunk == m_lasts.end())
            return end();
        const std::vector<T> &elements = m_chunks[std::size_t(chunk - m_lasts.begin())];
        const auto element = std::partition_point(elements.begin(), elements.end(), isBefore);
        return {std::size_t(chunk - m_lasts.begin()), std::size_t(element - elements.begin())};
    }

    /// Inserts \a value before \a p (at the end for the end) and answers its position.
    Position insert(Position p, T value)
    {
        if (m_chunks.empty()) {
            m_chunks.emplace_back().reserve(MaximumChunk + 1);
            m_lasts.push_back(value);
            p = {};
        } else if (isEnd(p)) {
            p = {m_chunks.size() - 1, m_chunks.back().size()};
        }
        std::vector<T> &chunk = m_chunks[p.chunk];
        chunk.insert(chunk.begin() + std::ptrdiff_t(p.offset), std::move(value));
        ++m_size;
        if (chunk.size() > MaximumChunk) {
            // Split in halves; the new chunk goes after this one.
            const std::size_t half = chunk.size() / 2;
            std::vector<T> upper;
            upper.reserve(MaximumChunk + 1);
            upper.assign(std::make_move_iterator(chunk.begin() + std::ptrdiff_t(half)), std::make_move_iterator(chunk.end()));
            chunk.erase(chunk.begin() + std::ptrdiff_t(half), chunk.end());
            m_lasts.insert(m_lasts.begin() + std::ptrdiff_t(p.chunk + 1), upper.back());
            m_lasts[p.chunk] = chunk.back();
            m_chunks.insert(m_chunks.begin() + std::ptrdiff_t(p.chunk + 1), std::move(upper));
            if (p.offset >= half)
                p = {p.chunk + 1, p.offset - half};
        }
        m_lasts[p.chunk] = m_chunks[p.chunk].back();
        return p;
    }

    /// Erases the element at \a p and answers the position of the one that followed it.
    Position erase(Position p)
    {
        std::vector<T> &chunk = m_chunks[p.chunk];
        chunk.erase(chunk.begin() + std::ptrdiff_t(p.offset));
        --m_size;
        if (chunk.empty()) {
            m_chunks.erase(m_chunks.begin() + std::ptrdiff_t(p.chunk));
            m_lasts.erase(m_lasts.begin() + std::ptrdiff_t(p.chunk));
            return {p.chunk, 0};
        }
        m_lasts[p.chunk] = chunk.back();
        return p.offset < chunk.size() ? p : Position{p.chunk + 1, 0};
    }

    void clear()
    {
        m_chunks.clear();
        m_lasts.clear();
        m_size = 0;
    }

private:
    std::vector<std::vector<T>> m_chunks;
    std::vector<T> m_lasts; // the last element of each chunk
    std::size_t m_size = 0;
};
