#include <examples/convert/Evidence.h>

#include <velum/files/EncodedBufferedFile.h>
#include <examples/convert/Survey.h>

namespace vlm::convert {
namespace {

constexpr unsigned int kSample = 512;
constexpr unsigned int kAssumedPage = 1252;

void SettleNarrow(const std::string& path, Evidence& evidence) {
  const Survey survey = TakeSurvey(path, {EncodingUTF8, 0});
  evidence.encoding = {EncodingUTF8, 0};
  if (survey.bytes == 0) {
    evidence.reason = "the file is empty";
  } else if (survey.ascii == survey.characters) {
    evidence.reason = "all of it is ASCII, which is UTF-8 as well";
  } else if (survey.malformed == 0) {
    evidence.reason = "all that is not ASCII (" + std::to_string(survey.characters - survey.ascii) +
                      ") is well-formed UTF-8, which other text hardly ever is";
  } else {
    evidence.encoding = {EncodingANSI, kAssumedPage};
    evidence.isSure = false;
    if (evidence.binary == ConfidenceCertain) {
      evidence.reason = "bytes of 0 stand where no text has them: this is hardly one";
      return;
    }
    evidence.reason =
        "narrow text, and no UTF-8: nothing in it tells one code page from another, so that this "
        "one is assumed; --from names another";
  }
}

}  // namespace

Evidence Examine(const std::string& path, const std::optional<Encoding>& named) {
  Evidence evidence;
  GetBOMInfo(path, evidence.markSize, evidence.mark.kind);
  evidence.narrow = IsFileANSI(path, kSample);
  evidence.utf16le = IsFileUTF16LE(path, kSample);
  evidence.utf16be = IsFileUTF16BE(path, kSample);
  evidence.binary = IsFileBinary(path, kSample);
  if (named) {
    evidence.encoding = *named;
    evidence.reason = "told by --from";
    return evidence;
  }
  const CEncodedBufferedFile file(path, "r", CEncodedBufferedFile::ShareDenyWrite, EncodingUnknown,
                                  0, false, false);
  evidence.encoding.kind = file.GetEncoding();
  if (file.GetEncoding() == EncodingANSI) {
    SettleNarrow(path, evidence);
  } else if (evidence.markSize > 0 && evidence.mark.kind == file.GetEncoding()) {
    evidence.reason = "its mark says so";
    if (evidence.encoding.kind != EncodingUTF8) evidence.reason += ", and its bytes bear it out";
  } else {
    evidence.reason = "its first bytes are spread as those of UTF-16 are, without a mark";
    const ConfidenceLevel level =
        evidence.encoding.kind == EncodingUTF16LE ? evidence.utf16le : evidence.utf16be;
    evidence.isSure = level == ConfidenceCertain || level == ConfidenceLikely;
    if (!evidence.isSure)
      evidence.reason = "bytes of 0 rule out narrow text, and nothing else fits";
  }
  return evidence;
}

const char* InWords(ConfidenceLevel level) {
  switch (level) {
    case ConfidenceCertain:
      return "certain";
    case ConfidenceNo:
      return "no";
    case ConfidenceLikely:
      return "likely";
    default:
      return "doubtful";
  }
}

std::string MarkText(const Evidence& evidence) {
  if (evidence.markSize == 0) return "none";
  if (evidence.markSize == 3) return "EF BB BF";
  return evidence.mark.kind == EncodingUTF16LE ? "FF FE" : "FE FF";
}

}  // namespace vlm::convert
