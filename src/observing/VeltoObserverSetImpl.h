// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoObserverSetImpl.h
 * \brief VeltoObserverSetImpl: the plain observer set that VeltoObserverSet::create() makes, over a
 * VeltoWeakObjectSet (observers compared by address, not owned).
 */

#include "VeltoObserverSet.h"

class VELTOCORE_EXPORT VeltoObserverSetImpl : public VeltoObserverSet
{
public:
    VeltoObserverSetImpl();
    ~VeltoObserverSetImpl() override;

    void invalidate() override;
    [[nodiscard]] quint64 count() const override;
    [[nodiscard]] QList<QObject *> copyObserversArray() const override;
    void addObserver(QObject *observer) override;
    void removeObserver(const QObject *observer) override;
    [[nodiscard]] bool containsObserver(const QObject *observer) const override;

protected:
    void takeSnapshot(Snapshot &snapshot) const override;
    [[nodiscard]] quint64 removalCount() const override;

private:
    class Private;
    std::unique_ptr<Private> const d;
};
