#include "IterateDataLoader.h"

void IterateDataLoader::startNextDownload()
{
    if (isRequestInFlight())
        return;
    if (m_urls.isEmpty()) {
        emit sendOK();
        return;
    }
    if (!m_tags.isEmpty())
        m_currentTag = m_tags.takeFirst();
    get(m_urls.takeFirst());
}
