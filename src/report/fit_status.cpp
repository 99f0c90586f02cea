// Codes in words.
#include "core/screens.h"
#include "core/text.h"
#include "report/fit_report.h"

#include <algorithm>
#include <iterator>

namespace torvane {

namespace {

struct CodeText {
    StatusCode code;
    bool failure;     // also replaces the lower pane
    const char* text; // one name at most
};

constexpr CodeText codeTexts[] = {
    {fitNotSupported, true, "found an invalid file extension '%s' not supported"},
    {fitCannotOpen, true, "failed to open the file '%s'"},
    {fitInvalid, true, "failed to read the file '%s' might be an invalid structure"},
    {fitWrongCrc, true, "found invalid CRC. the file '%s' might be broken"},
    {fitNotLoaded, true, "could not express messages cause a fit file had not be loaded"},
    {fitNoSector, true, "no effective sector. please try to set the threshold speed to be more shorter"},
    {fitSizeMismatch, true, "failed to create a fit file"},
    {fitSaveFailed, true, "failed to save the data to a fit file '%s'"},
    {fitCombineFailed, true, "failed to combine fit files to '%s'"},
    {fitConvertFailed, true, "failed to convert a fit file '%s'"},
    {fitAddFailed, true, "failed to add messages to a fit file '%s'"},
    {fitDivideFailed, true, "failed to divide a fit file '%s'"},
    {fitPrepareFailed, true, "failed to prepare a fit file '%s'"},
    {fitNotComparable, true, "found no common second of power to compare with '%s'"},
    {fitTooLarge, true, "what would be made of '%s' is far too large for its size"},
    {fitTooShort, true, "less than five minutes of '%s' can be used"},
    {fitPlanned, true, "'%s' is a planned route or course that nobody rode: its points tell no ride"},
    {fitWithoutPoints, true, "'%s' holds no point of a track"},
    {fitWithoutTimes, true, "no point of '%s' has a time, so nothing can be said of speed"},
    {fitXmlBroken, true, "'%s' is broken: its XML is cut off or not well-formed"},
    {fitDoctype, true, "'%s' declares a document type, which no track file needs; it is not read"},
    {fitLoaded, false, "success to load GPS data from '%s'"},
    {fitExpressed, false, "express remarkable fields data of '%s'"},
    {fitPredictionSaved, false, "saved a fit file with prediction data as '%s'"},
    {fitCombined, false, "success to combine source fit files to '%s'"},
    {fitConverted, false, "success to convert a fit file to '%s'"},
    {fitAdded, false, "success to add messages to '%s'"},
    {fitDivided, false, "success to divide a fit file to '%s'"},
    {fitPrepared, false, "success to prepare a fit file as '%s'"},
};

void reportText(Screens& screens, const CodeText& row, const std::string& name)
{
    std::string text = formatText(row.text, name.c_str());
    if (row.failure)
        screens.setText(Pane::lower, "\n\t" + text);
    screens.setStatus("status : " + text);
}

std::string incoherenceText(StatusCode code, const std::string& name)
{
    constexpr StatusCode sportsDiffer = (fitSessionSportsDiffer | fitLapSportsDiffer) & ~fitIncoherent;
    constexpr StatusCode fieldsDiffer = fitRecordFieldsDiffer & ~fitIncoherent;
    bool sports = (code & sportsDiffer) != 0;
    bool fields = (code & fieldsDiffer) != 0;
    if (sports && fields)
        return formatText("\n\tdetected lack coherence about sport types and record fields in '%s'\n", name.c_str());
    if (fields)
        return formatText("\n\tdetected lack coherence about record fields in '%s'\n", name.c_str());
    return formatText("\n\tdetected lack coherence about sport types of multiple %s in '%s'\n",
                      code == fitSessionSportsDiffer ? "sessions" : "laps", name.c_str());
}

bool isIncoherence(StatusCode code)
{
    constexpr StatusCode codes[] = {fitSessionSportsDiffer, fitLapSportsDiffer, fitRecordFieldsDiffer,
                                    fitSessionSportsDiffer | fitRecordFieldsDiffer,
                                    fitLapSportsDiffer | fitRecordFieldsDiffer};
    return std::find(std::begin(codes), std::end(codes), code) != std::end(codes);
}

void reportIncoherence(Screens& screens, StatusCode code, const std::string& name)
{
    screens.appendText(Pane::lower, incoherenceText(code, name) +
                                        "\tit's recommended to divide the fit file for analysis and prediction.\n");
    screens.setStatus("status : detected lack coherence, please divide the fit file for analysis");
}

} // namespace

StatusCode reportStatus(Screens& screens, std::string_view path, StatusCode statusCode)
{
    // Divided files are reported as a list of names.
    std::string name = statusCode == fitDivided ? std::string(path) : reportedName(path);
    if (statusCode == fitOk)
        screens.setStatus("");
    if (isIncoherence(statusCode))
        reportIncoherence(screens, statusCode, name);
    for (const CodeText& row : codeTexts)
        if (row.code == statusCode)
            reportText(screens, row, name);
    return statusCode;
}

StatusCode reportUnsaved(Screens& screens, const std::string& sentence)
{
    screens.appendText(Pane::lower, "\n\t" + sentence + "\n");
    screens.setStatus("status : " + sentence);
    return fitSaveFailed;
}

} // namespace torvane
