// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoDocument.h
 * \brief VeltoDocument: what the library needs to know about one of the host application's documents.
 *
 * Qt has no document model; a document-based application implements this small interface on its own
 * document class (and VeltoWindowController on whatever shows a document in a window), so that
 * VeltoApplication::orderedVisibleDocumentsVelto() and the window-for-sheet lookups of the interface
 * library can reason about documents and their windows.
 *
 * \code
 * class TextDocument : public QObject, public VeltoDocument
 * {
 *     QList<VeltoWindowController *> windowControllers() const override { return {m_editorController}; }
 * };
 * \endcode
 */

#include "veltocore_export.h"

#include <QList>

class QObject;
class VeltoWindowController;

/// VeltoDocument: a document of the host application, shown by zero or more window controllers.
class VELTOCORE_EXPORT VeltoDocument
{
public:
    virtual ~VeltoDocument();

    /// windowControllers: the controllers showing this document, in the document's order. Not owned.
    [[nodiscard]] virtual QList<VeltoWindowController *> windowControllers() const = 0;

    /**
     * windowForSheet: the window on which a sheet about this document belongs (a QWidget or QWindow),
     * or nullptr. By default the window of the first window controller whose window is loaded;
     * override it to choose another.
     */
    [[nodiscard]] virtual QObject *windowForSheet() const;

protected:
    VeltoDocument() = default;
    VeltoDocument(const VeltoDocument &) = default;
    VeltoDocument &operator=(const VeltoDocument &) = default;
};
