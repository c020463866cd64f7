#include "LoopDataLoader.h"

void LoopDataLoader::startNextDownload()
{
    if (isRequestInFlight() || m_urls.isEmpty())
        return;
    // The head goes to the back, so the list turns and never runs out.
    if (!m_tags.isEmpty()) {
        m_currentTag = m_tags.takeFirst();
        m_tags.append(m_currentTag);
    }
    const QString url = m_urls.takeFirst();
    m_urls.append(url);
    get(url);
}
