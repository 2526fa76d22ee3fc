#include "addin/flows/RunMessages.h"

#include "base/Format.h"

namespace zn {

RunMessages::RunMessages(
    MacroBuilder& log, const std::shared_ptr<IArkVault>& vault, const std::shared_ptr<IArkTaskInstance>& instance)
    : m_log(log)
    , m_vault(vault)
    , m_run(query<IArkRunMessages>(instance))
    , m_results(query<IArkRunResults>(instance))
    , m_audit(query<IArkRunAudit>(instance))
{
}

void RunMessages::tell(const Text& path, const Text& sentence)
{
    tellWithRun(path, sentence);
    if (!m_logIsOpen)
        return;
    Text line = (path.empty() ? Text() : u"Error while processing file '" + path + u"': ") + sentence + u"\n";
    replaceAll(line, u"\r\n", u"\n");
    replaceAll(line, u"\n", u"\r\n");
    try {
        m_log.AppendToLog(line);
    } catch (const StatusError&) {
        return; // the run itself has the sentence
    }
}

void RunMessages::tellWithRun(const Text& path, const Text& sentence)
{
    m_sentences[foldCase(path)] = sentence;
    if (m_run)
        m_run->AddMessage(path, sentence);
}

void RunMessages::tellOutputs(const OutputTally& outputs)
{
    if (m_run)
        m_run->SetOutputs(outputs.expected, outputs.missing);
}

void RunMessages::tellResults(std::vector<ArkFileResult> results)
{
    if (!m_results)
        return;
    for (ArkFileResult& result : results) {
        if (result.outcome != FileOutcome::Failed)
            continue;
        auto said = m_sentences.find(foldCase(result.output));
        if (result.output.empty() || said == m_sentences.end())
            said = m_sentences.find(foldCase(result.source));
        if (said != m_sentences.end())
            result.sentence = said->second;
    }
    results.insert(results.end(), m_kept.begin(), m_kept.end());
    m_results->SetFileResults(results);
}

void RunMessages::tellApplication(const ArkApplication& application)
{
    if (m_audit)
        m_audit->NoteApplication(application);
}

void RunMessages::tellMacro(const OutputRecord& record, const Text& macro)
{
    if (m_audit)
        m_audit->NoteMacro({record.path, record.docId, effectiveVersion(record), record.selConfiguration, macro});
}

Text RunMessages::currentSentence() const
{
    try {
        throw;
    } catch (const StatusError& error) {
        if (error.what()[0])
            return toText(error.what());
    } catch (const std::exception&) {
        // Its words are for programmers; what the host knows of its status is for everybody.
    }
    const Status status = currentExceptionStatus();
    Text name;
    Text sentence;
    if (m_vault->GetErrorText(status, name, sentence) == S_OK && !sentence.empty())
        return sentence;
    return formatText("The run failed with the status %08X.", static_cast<std::uint32_t>(status));
}

} // namespace zn
