// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#pragma once

/**
 * \file VeltoSecureURL_Doc.h
 * \brief VeltoSecureURL_Doc: a reference kept inside a document, with bookmark data made and resolved
 * relative to that document, so that it follows the document and its file when both move together.
 *
 * \code
 * const auto image = VeltoSecureURL_Doc::initDocumentScopedCapturingBookmarkForURL(imageURL, true, documentURL, &error);
 * const QByteArray stored = image->serializationStorableInDocumentWithURL(documentURL);
 * const auto again = VeltoSecureURL_Doc::initDocumentScopedWithSerializedData(stored, documentURL);
 * \endcode
 */

#include "VeltoSecureURL.h"

/// VeltoSecureURL_Doc: a secure URL relative to a document.
class VELTOCORE_EXPORT VeltoSecureURL_Doc : public VeltoSecureURL
{
public:
    explicit VeltoSecureURL_Doc(ConstructionKey key);
    ~VeltoSecureURL_Doc() override;

    /**
     * initDocumentScopedCapturingBookmarkForURL: a reference to \a url captured relative to \a documentURL.
     * Never an existing object and never a subpath: nothing, with \a error, when capturing fails.
     */
    [[nodiscard]] static std::shared_ptr<VeltoSecureURL_Doc> initDocumentScopedCapturingBookmarkForURL(
        const QUrl &url, bool readOnly, const QUrl &documentURL, VeltoError *error = nullptr);
    /**
     * initDocumentScopedWithSerializedData: the reference \a data stores, relative to \a documentURL
     * (VeltoSecureURL::initWithSerializedData()); nothing without a document URL.
     */
    [[nodiscard]] static std::shared_ptr<VeltoSecureURL> initDocumentScopedWithSerializedData(const QByteArray &data,
                                                                                             const QUrl &documentURL);
    /// initWithSerializedData: always nothing: a document-scoped reference needs its document.
    [[nodiscard]] static std::shared_ptr<VeltoSecureURL> initWithSerializedData(const QByteArray &data);

    [[nodiscard]] QUrl documentURL() const override;
    void setDocumentURL(const QUrl &url);

private:
    class Private;
    std::unique_ptr<Private> const s;
};
