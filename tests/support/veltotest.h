// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

// What every test program shares: one way of checking the VeltoException an expression throws, random
// generators whose seed is printed when a test fails, and a user-defaults store of its own.

#include "VeltoException.h"
#include "VeltoUserDefaults.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

/// The VeltoException \a expression throws, or nothing.
template <typename Expression>
std::optional<VeltoException> veltoThrown(Expression &&expression)
{
    try {
        expression();
    } catch (const VeltoException &exception) {
        return exception;
    }
    return std::nullopt;
}

/// Checks that \a expression throws a VeltoException with \a expectedName and \a expectedReason.
#define VELTO_COMPARE_THROWN(expression, expectedName, expectedReason)                                     \
    do {                                                                                                 \
        const auto caught = veltoThrown([&] { expression; });                                            \
        QVERIFY2(caught.has_value(), "no VeltoException was thrown by " #expression);                    \
        QCOMPARE(caught->name(), QString(expectedName));                                                 \
        QCOMPARE(caught->reason(), QString(expectedReason));                                             \
    } while (false)

/// A generator with a fixed seed that names the seed when the test using it fails.
class VeltoTestRandom : public QRandomGenerator
{
public:
    explicit VeltoTestRandom(quint32 seed) : QRandomGenerator(seed), m_seed(seed) {}
    ~VeltoTestRandom()
    {
        if (QTest::currentTestFailed())
            qWarning("random values were drawn with seed %u", m_seed);
    }
    VeltoTestRandom(const VeltoTestRandom &) = delete;
    VeltoTestRandom &operator=(const VeltoTestRandom &) = delete;
    [[nodiscard]] quint32 seed() const { return m_seed; }

private:
    quint32 m_seed;
};

/// A standard user-defaults store in a temporary folder, for the life of the object.
class VeltoTestDefaults
{
public:
    VeltoTestDefaults()
        : store(std::make_shared<VeltoUserDefaults>(folder.filePath(QStringLiteral("defaults.plist"))))
    {
        VeltoUserDefaults::setStandardUserDefaults(store);
    }
    ~VeltoTestDefaults()
    {
        if (VeltoUserDefaults::standardUserDefaults() == store) // not replaced by a newer one meanwhile
            VeltoUserDefaults::setStandardUserDefaults(nullptr);
    }
    VeltoTestDefaults(const VeltoTestDefaults &) = delete;
    VeltoTestDefaults &operator=(const VeltoTestDefaults &) = delete;

    VeltoUserDefaults *operator->() const { return store.get(); }
    /// set: stores \a value under \a key; false when the store could not write it.
    bool set(const QString &key, const QVariant &value) const { return store->setObject(value, key); }

    QTemporaryDir folder;
    std::shared_ptr<VeltoUserDefaults> store;
};
