// SPDX-FileCopyrightText: 2026 VeltoCore developers
// SPDX-License-Identifier: MIT

#include "VeltoSecureURL_Doc.h"

using Lock = std::lock_guard<std::recursive_mutex>;

class VeltoSecureURL_Doc::Private
{
public:
    QUrl documentURL; // guarded by the object's lock
};

VeltoSecureURL_Doc::VeltoSecureURL_Doc(ConstructionKey key) : VeltoSecureURL(key), s(std::make_unique<Private>()) {}

VeltoSecureURL_Doc::~VeltoSecureURL_Doc() = default;

std::shared_ptr<VeltoSecureURL_Doc> VeltoSecureURL_Doc::initDocumentScopedCapturingBookmarkForURL(const QUrl &url, bool readOnly,
                                                                                                 const QUrl &documentURL,
                                                                                                 VeltoError *error)
{
    const auto made = std::make_shared<VeltoSecureURL_Doc>(ConstructionKey());
    made->setDocumentURL(documentURL);
    return made->captureBookmarkForURL(url, captureFlagsForURL(url, readOnly), error) ? made : nullptr;
}

std::shared_ptr<VeltoSecureURL> VeltoSecureURL_Doc::initDocumentScopedWithSerializedData(const QByteArray &data,
                                                                                         const QUrl &documentURL)
{
    if (documentURL.isEmpty())
        return nullptr;
    const auto made = std::make_shared<VeltoSecureURL_Doc>(ConstructionKey());
    made->setDocumentURL(documentURL);
    return initWithSerializedDataInto(made, data);
}

std::shared_ptr<VeltoSecureURL> VeltoSecureURL_Doc::initWithSerializedData(const QByteArray &)
{
    return nullptr;
}

QUrl VeltoSecureURL_Doc::documentURL() const
{
    Lock guard(lock());
    return s->documentURL;
}

void VeltoSecureURL_Doc::setDocumentURL(const QUrl &url)
{
    Lock guard(lock());
    s->documentURL = url;
}
