// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoDeferToBaseRunLoop.h"

#include <QObject>

namespace {

// Qt delivers a deferred deletion only when control is back in the loop that was running when it was
// asked for (or in the first loop, when none was), never in a nested loop: exactly the moment wanted.
// The closure rides on that: it runs as its carrier is deleted.
class VTDeferredBlock : public QObject
{
public:
    explicit VTDeferredBlock(std::function<void()> block) : m_block(std::move(block)) {}
    ~VTDeferredBlock() override
    {
        if (m_block)
            m_block();
    }

private:
    std::function<void()> m_block;
};

} // namespace

void VeltoDeferToBaseRunLoop(std::function<void()> block)
{
    if (block)
        (new VTDeferredBlock(std::move(block)))->deleteLater();
}
