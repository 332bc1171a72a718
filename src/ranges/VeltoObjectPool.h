// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoObjectPool.h
 * \brief VeltoObjectPool: a bounded, thread-safe stack of reusable objects.
 *
 * Code that makes and drops many short-lived objects of one kind pools them instead: poolObject()
 * keeps an object while there is room, newDepooledObject() hands the most recently pooled one back.
 *
 * \code
 * VeltoObjectPool<QByteArray> buffers(8);
 * std::shared_ptr<QByteArray> buffer = buffers.newDepooledObject();
 * if (!buffer)
 *     buffer = std::make_shared<QByteArray>();
 * ...
 * buffers.poolObject(buffer);                 // false when the pool is full: the caller's object simply goes
 * \endcode
 *
 * Thread safety: poolObject() and newDepooledObject() may be called from any thread; each holds the
 * pool's own recursive lock for its whole body.
 */

#include <QMetaType>
#include <QObject>
#include <QString>

#include <memory>
#include <mutex>
#include <type_traits>
#include <vector>

/// \brief VeltoObjectPool: at most capacity objects, last in, first out.
template <typename T>
class VeltoObjectPool
{
public:
    /// A pool for \a capacity objects.
    explicit VeltoObjectPool(quint64 capacity) : VeltoObjectPool(capacity, capacity) {}
    /// A pool for \a capacity objects; \a optimalCount is accepted and not used.
    VeltoObjectPool(quint64 optimalCount, quint64 capacity) : m_capacity(capacity)
    {
        Q_UNUSED(optimalCount);
        m_objects.reserve(capacity);
    }
    /// Releases the pooled objects, first to last.
    ~VeltoObjectPool()
    {
        for (auto &object : m_objects)
            object.reset();
    }
    VeltoObjectPool(const VeltoObjectPool &) = delete;
    VeltoObjectPool &operator=(const VeltoObjectPool &) = delete;

    /// poolObject: keeps \a object and answers true while the pool has room; otherwise answers false.
    bool poolObject(std::shared_ptr<T> object)
    {
        std::lock_guard<std::recursive_mutex> lock(m_lock);
        if (m_objects.size() >= m_capacity)
            return false;
        m_objects.push_back(std::move(object));
        return true;
    }

    /// newDepooledObject: the most recently pooled object, now the caller's; null when the pool is empty.
    [[nodiscard]] std::shared_ptr<T> newDepooledObject()
    {
        std::lock_guard<std::recursive_mutex> lock(m_lock);
        if (m_objects.empty())
            return nullptr;
        std::shared_ptr<T> object = std::move(m_objects.back());
        m_objects.pop_back();
        return object;
    }

    [[nodiscard]] quint64 count() const
    {
        std::lock_guard<std::recursive_mutex> lock(m_lock);
        return m_objects.size();
    }
    [[nodiscard]] quint64 capacity() const { return m_capacity; }

    /**
     * description: "VeltoObjectPool<0x…> holding N objects, next=Class<0x…>", naming the object that
     * would be depooled next ("(null)<0x0>" when empty).
     */
    [[nodiscard]] QString description() const
    {
        std::lock_guard<std::recursive_mutex> lock(m_lock);
        const T *next = m_objects.empty() ? nullptr : m_objects.back().get();
        return QStringLiteral("VeltoObjectPool<0x%1> holding %2 objects, next=%3<0x%4>")
            .arg(quintptr(this), 0, 16)
            .arg(m_objects.size())
            .arg(className(next))
            .arg(quintptr(next), 0, 16);
    }

private:
    static QString className(const T *object)
    {
        if (!object)
            return QStringLiteral("(null)");
        if constexpr (std::is_base_of_v<QObject, T>)
            return QString::fromLatin1(object->metaObject()->className());
        else
            return QString::fromLatin1(QMetaType::fromType<T>().name());
    }

    mutable std::recursive_mutex m_lock;
    std::vector<std::shared_ptr<T>> m_objects;
    const quint64 m_capacity;
};
