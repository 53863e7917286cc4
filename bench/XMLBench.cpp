#include "text/Numerals.h"
#include "text/UStringBuilder.h"
#include "xml/SimpleXML.h"
#include "xml/XMLSerialize.h"

#include <benchmark/benchmark.h>
#include <expat.h>
#include <pugixml.hpp>

#include <cstdint>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

// Documents of the sizes that the pipe carries, read into a tree and written from records. Two other
// libraries read and write the same bytes in the same run: one that reports events only, one that builds a
// tree. Reading into a tree includes destroying it.

namespace {

constexpr std::uint32_t cSeed = 20110102;
constexpr std::int64_t cKiB = 1024;
constexpr std::int64_t cLargestFrame = 2048 * cKiB;

// Numbers that do not depend on the standard library's distributions.
class Random {
public:
    std::uint32_t Below(std::uint32_t limit) { return static_cast<std::uint32_t>(m_engine() % limit); }

private:
    std::mt19937 m_engine{cSeed};
};

std::string RandomFrom(Random& random, char const* letters, std::size_t size) {
    std::string const from = letters;
    std::string text(size, ' ');
    for (char& letter : text) letter = from[random.Below(static_cast<std::uint32_t>(from.size()))];
    return text;
}

std::string Words(Random& random, std::size_t size) {
    std::string text;
    while (text.size() < size) {
        text += RandomFrom(random, "abcdefghijklmnopqrstuvwxyz", 2 + random.Below(9));
        text += random.Below(12) == 0 ? " & " : " ";
    }
    text.resize(size);
    return text;
}

// Documents

std::string const cHeader = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

// One file in Base64.
std::string TextHeavy(std::int64_t bytes) {
    Random random;
    std::string const before = cHeader + "\n<ClientToUI>\n\t<FileTransfer>\n\t\t<Contents>";
    std::string const after = "</Contents>\n\t</FileTransfer>\n</ClientToUI>\n";
    std::size_t const size = static_cast<std::size_t>(bytes) - before.size() - after.size();
    return before +
           RandomFrom(random, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/", size) +
           after;
}

void AppendField(std::string& document, char const* name, std::string const& value) {
    document += std::string("\n\t\t<") + name + '>' + value + "</" + name + '>';
}

void AppendAction(std::string& document, Random& random) {
    auto const flag = [&random] { return random.Below(2) == 0 ? "true" : "false"; };
    auto const section = [](std::string const& text) { return "<![CDATA[" + text + "]]>"; };
    document += "\n\t<ActionRequest>";
    AppendField(document, "ID", std::to_string(100000 + random.Below(900000)));
    AppendField(document, "Title", section("Install R&D tools (" + std::to_string(random.Below(1000)) + ")"));
    AppendField(document, "ShortDescription", section(Words(random, 60) + " <b>"));
    AppendField(document, "Deadline", "Sun, 02 Jan 2011 08:05:09 +0000");
    for (char const* const name : {"Cancellable", "Restart", "Shutdown", "IncludedCommand", "ForceRun",
                                   "RequestSave", "UseCannedStrings"})
        AppendField(document, name, flag());
    AppendField(document, "SourceActionTitle", section("Patch & restart " + Words(random, 12)));
    document += "\n\t</ActionRequest>";
}

std::string ActionHeavy(std::int64_t actions) {
    Random random;
    std::string document = cHeader + "\n<ClientToUI>";
    for (std::int64_t action = 0; action < actions; ++action) AppendAction(document, random);
    return document + "\n</ClientToUI>\n";
}

std::string Repeated(char const* piece, std::size_t count) {
    std::string text;
    for (std::size_t index = 0; index < count; ++index) text += piece;
    return text;
}

// Element in element, of no name, none of them ended.
std::string OpenTags(std::int64_t bytes) {
    return Repeated("<>", static_cast<std::size_t>(bytes) / 2);
}

// Every level gets a second child after the whole depth below it is closed.
std::string LateLeaves(std::int64_t bytes) {
    std::size_t const levels = static_cast<std::size_t>(bytes) / 14;
    return Repeated("<a>", levels) + Repeated("<b></b></a>", levels);
}

std::string OneAttribute(std::int64_t bytes) {
    Random random;
    return "<a b=\"" + RandomFrom(random, "abcdefgh ", static_cast<std::size_t>(bytes) - 12) + "\"></a>";
}

std::string Entities(std::int64_t bytes) {
    return "<a>" + Repeated("&lt;", (static_cast<std::size_t>(bytes) - 7) / 4) + "</a>";
}

using MakeDocument = std::string (*)(std::int64_t);

// Readers

void CountBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * state.iterations());
}

void ReadToTree(benchmark::State& state, MakeDocument make) {
    std::string const document = make(state.range(0));
    UStringRef<UTF8> const text = MakeUTF8Ref(document);
    for (auto _ : state) benchmark::DoNotOptimize(SimpleXML::ParseXMLToTree(text)->children.data());
    CountBytes(state, document.size());
}

void ReadEventsWithExpat(benchmark::State& state, MakeDocument make) {
    std::string const document = make(state.range(0));
    for (auto _ : state) {
        XML_Parser const parser = XML_ParserCreate(nullptr);
        XML_SetElementHandler(
            parser, [](void*, XML_Char const*, XML_Char const**) {}, [](void*, XML_Char const*) {});
        XML_SetCharacterDataHandler(parser, [](void*, XML_Char const*, int) {});
        XML_Status const status = XML_Parse(parser, document.data(), static_cast<int>(document.size()), 1);
        if (status != XML_STATUS_OK) state.SkipWithError("not read");
        XML_ParserFree(parser);
    }
    CountBytes(state, document.size());
}

void ReadToTreeWithPugixml(benchmark::State& state, MakeDocument make) {
    std::string const document = make(state.range(0));
    for (auto _ : state) {
        pugi::xml_document tree;
        if (!tree.load_buffer(document.data(), document.size())) state.SkipWithError("not read");
        benchmark::DoNotOptimize(tree.first_child());
    }
    CountBytes(state, document.size());
}

void FrameSizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Unit(benchmark::kMicrosecond)->ArgName("bytes");
    for (std::int64_t const bytes : {256 * cKiB, 1024 * cKiB, cLargestFrame}) benchmark->Arg(bytes);
}

void ActionCounts(benchmark::internal::Benchmark* benchmark) {
    benchmark->Unit(benchmark::kMicrosecond)->ArgName("actions")->Arg(437)->Arg(1750)->Arg(3500);
}

void BM_ParseXMLToTree_TextHeavy(benchmark::State& state) {
    ReadToTree(state, TextHeavy);
}
void BM_Expat_TextHeavy(benchmark::State& state) {
    ReadEventsWithExpat(state, TextHeavy);
}
void BM_Pugixml_TextHeavy(benchmark::State& state) {
    ReadToTreeWithPugixml(state, TextHeavy);
}
BENCHMARK(BM_ParseXMLToTree_TextHeavy)->Apply(FrameSizes);
BENCHMARK(BM_Expat_TextHeavy)->Apply(FrameSizes);
BENCHMARK(BM_Pugixml_TextHeavy)->Apply(FrameSizes);

void BM_ParseXMLToTree_ActionHeavy(benchmark::State& state) {
    ReadToTree(state, ActionHeavy);
}
void BM_Expat_ActionHeavy(benchmark::State& state) {
    ReadEventsWithExpat(state, ActionHeavy);
}
void BM_Pugixml_ActionHeavy(benchmark::State& state) {
    ReadToTreeWithPugixml(state, ActionHeavy);
}
BENCHMARK(BM_ParseXMLToTree_ActionHeavy)->Apply(ActionCounts);
BENCHMARK(BM_Expat_ActionHeavy)->Apply(ActionCounts);
BENCHMARK(BM_Pugixml_ActionHeavy)->Apply(ActionCounts);

// What a hostile peer could send. The other libraries refuse most of it, so these have no peers: the figure
// to look at is whether the bytes a second stay the same from one size to the next.

void BM_ParseXMLToTree_OpenTags(benchmark::State& state) {
    ReadToTree(state, OpenTags);
}
void BM_ParseXMLToTree_LateLeaves(benchmark::State& state) {
    ReadToTree(state, LateLeaves);
}
void BM_ParseXMLToTree_OneAttribute(benchmark::State& state) {
    ReadToTree(state, OneAttribute);
}
void BM_ParseXMLToTree_Entities(benchmark::State& state) {
    ReadToTree(state, Entities);
}
BENCHMARK(BM_ParseXMLToTree_OpenTags)->Apply(FrameSizes);
BENCHMARK(BM_ParseXMLToTree_LateLeaves)->Apply(FrameSizes);
BENCHMARK(BM_ParseXMLToTree_OneAttribute)->Apply(FrameSizes);
BENCHMARK(BM_ParseXMLToTree_Entities)->Apply(FrameSizes);

// Answers: one small document each.

struct Answer {
    unsigned long id;
    bool isCancel;
    bool isOffer;
    std::string originator;
};

std::vector<Answer> Answers(std::int64_t count) {
    Random random;
    std::vector<Answer> answers;
    for (std::int64_t index = 0; index < count; ++index)
        answers.push_back({100000 + random.Below(900000), random.Below(2) == 0, random.Below(2) == 0,
                           "R&D " + Words(random, 16)});
    return answers;
}

AutoUString<UTF8> Written(Answer const& answer) {
    UStringBuilder<UTF8> text;
    XMLWriter writer(text, XMLWriter::Compact);
    writer.BeginDocument(XMLWriter::WithEncoding);
    writer.BeginElement("UIToClient");
    writer.BeginElement("ActionTaken");
    XMLSerialize(writer, "ID", answer.id);
    XMLSerialize(writer, "IsCancel", answer.isCancel);
    XMLSerialize(writer, "IsOffer", answer.isOffer);
    XMLSerialize(writer, "Originator", answer.originator);
    writer.EndDocument(XMLWriter::FinalLineFeed);
    return text.Take();
}

std::string WrittenWithPugixml(Answer const& answer) {
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    pugi::xml_node taken = document.append_child("UIToClient").append_child("ActionTaken");
    taken.append_child("ID").text() = answer.id;
    taken.append_child("IsCancel").text() = answer.isCancel;
    taken.append_child("IsOffer").text() = answer.isOffer;
    taken.append_child("Originator").append_child(pugi::node_cdata).set_value(answer.originator.c_str());
    struct StringWriter : pugi::xml_writer {
        void write(void const* data, std::size_t size) override {
            text.append(static_cast<char const*>(data), size);
        }
        std::string text;
    };
    StringWriter writer;
    document.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
    return std::move(writer.text);
}

template <class Write>
void WriteAnswers(benchmark::State& state, Write write) {
    std::vector<Answer> const answers = Answers(state.range(0));
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (Answer const& answer : answers) {
            auto const document = write(answer);
            benchmark::DoNotOptimize(document.begin());
            bytes += static_cast<std::size_t>(document.end() - document.begin());
        }
    }
    CountBytes(state, bytes);
}

void AnswerCounts(benchmark::internal::Benchmark* benchmark) {
    benchmark->Unit(benchmark::kMicrosecond)->ArgName("answers")->Arg(100)->Arg(1000)->Arg(10000);
}

void BM_XMLWriter_Answers(benchmark::State& state) {
    WriteAnswers(state, Written);
}
void BM_Pugixml_Answers(benchmark::State& state) {
    WriteAnswers(state, WrittenWithPugixml);
}
BENCHMARK(BM_XMLWriter_Answers)->Apply(AnswerCounts);
BENCHMARK(BM_Pugixml_Answers)->Apply(AnswerCounts);

} // namespace
