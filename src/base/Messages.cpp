#include "base/Messages.h"

#include "base/Log.h"
#include "base/StringTable.h"

namespace kestrune {

namespace {

class CLogSink final : public CMessageSink {
public:
    MessageAnswer Message(const std::string& strText, MessageButtons, MessageAnswer nDefault) override
    {
        LogWarning("message: " + strText);
        return nDefault;
    }
    void StatusText(const std::string& strText) override { LogWarning("status: " + strText); }
};

CLogSink g_logSink;
CMessageSink* g_pSink = &g_logSink;

} // namespace

CMessageSink& Messages()
{
    return *g_pSink;
}

void SetMessageSink(CMessageSink* pSink)
{
    g_pSink = pSink ? pSink : &g_logSink;
}

void SayMessage(const std::string& strText)
{
    Messages().Message(strText, MessageButtons::Ok, MessageAnswer::Ok);
}

void SayMessage(int nStringId)
{
    SayMessage(std::string(StringText(nStringId)));
}

void SayStop(int nStringId)
{
    Messages().Stop(std::string(StringText(nStringId)));
}

} // namespace kestrune
