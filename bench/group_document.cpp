// SPDX-License-Identifier: MIT
//
// The jobs on a whole document: read, write, read+edit+write, copy, compare, destroy.

#include <ko/Orvid.h>

#include <memory>
#include <ostream>
#include <stdexcept>
#include <streambuf>

#include "group.h"
#include "peers/yajl.h"

namespace orvid_bench {

namespace {

const std::string k_pass = "bare YAJL pass";
const std::string k_gen = "yajl_gen";
const std::string k_compact = "orvid, compact";

/// Takes all that is written and keeps its length only.
class CountingBuffer : public std::streambuf {
protected:
    std::streamsize xsputn(const char* /*text*/, std::streamsize length) override {
        m_count += static_cast<std::size_t>(length);
        return length;
    }
    int_type overflow(int_type c) override {
        ++m_count;
        return traits_type::not_eof(c);
    }

private:
    std::size_t m_count = 0;
};

/// A document's text with its tree in each library that reads it in acceptable time.
struct Subjects {
    struct Subject {
        Peer peer;
        std::unique_ptr<Tree> tree;
    };

    explicit Subjects(const Document& source) : document(source), tokens(source.text) {
        for (const Peer& peer : allPeers()) {
            if (peer.canRead(document.widest)) {
                all.push_back({peer, peer.read(document.text)});
            }
        }
    }

    Document document;
    TokenList tokens;
    std::vector<Subject> all;
};

using Shared = std::shared_ptr<Subjects>;

void require(bool condition, const std::string& subject, const std::string& what) {
    if (!condition) {
        throw std::runtime_error(subject + " has not understood the document: " + what);
    }
}

void requireAgreement(const Summary& expected, const Summary& actual, const std::string& subject) {
    require(agree(expected, actual), subject, actual.text() + " instead of " + expected.text());
}

void verifyRead(const Subjects& subjects) {
    const Summary expected = summaryOfPass(subjects.document.text);
    for (const auto& subject : subjects.all) {
        requireAgreement(expected, subject.tree->summary(), subject.peer.name);
    }
}

void verifyWrite(const Subjects& subjects) {
    verifyRead(subjects);
    const Summary expected = summaryOfPass(subjects.document.text);
    requireAgreement(expected, summaryOfPass(subjects.tokens.text()), k_gen);
    for (const auto& subject : subjects.all) {
        const std::string text = subject.tree->text();
        requireAgreement(expected, summaryOfPass(text), subject.peer.name + ", writing");
        require(subject.tree->write() == text.size(), subject.peer.name, "length of the text");
    }
    require(subjects.all.front().tree->text() == subjects.tokens.text(), "orvid",
            "its text is not yajl_gen's");
}

void verifyCopy(const Subjects& subjects) {
    for (const auto& subject : subjects.all) {
        const auto copy = subject.tree->copy();
        require(!subject.peer.canCompare(subjects.document.widest) || copy->equals(*subject.tree),
                subject.peer.name, "the copy differs");
        requireAgreement(subject.tree->summary(), copy->summary(), subject.peer.name + ", copying");
    }
}

void verifyEdit(const Subjects& subjects) {
    for (const auto& subject : subjects.all) {
        const auto tree = subject.peer.read(subjects.document.text);
        tree->edit();
        const auto again = subject.peer.read(tree->text());
        require(again->scalar({"edited", "/edited"}) == "1" &&
                    again->scalar({"editor", "/editor"}) == "bench",
                subject.peer.name, "the edit is lost");
    }
}

/// One job for each library; `makeJob` gets the subject and makes it.
template<class MakeJob>
Group groupOf(const std::string& job, const Shared& subjects, const MakeJob& makeJob) {
    Group group{job, subjects->document.name, {}};
    for (auto& subject : subjects->all) {
        group.jobs.push_back(makeJob(subject));
    }
    return group;
}

bool isCorpus(const std::string& document) {
    return document == "twitter" || document == "citm_catalog" || document == "canada";
}

/// With mimalloc, of the time of the bare YAJL pass.
double passLimit(const std::string& document) {
    return document == "canada" ? 3.5 : document == "twitter" ? 2.5 : 2.2;
}

/// Arrays of numbers, which the library keeps as text and RapidJSON as doubles.
bool isCoordinates(const std::string& document) {
    return document == "canada" || document == "coordinates";
}

Job strictJob(const Shared& subjects) {
    return {"orvid, strict", [subjects] {
                const ko::Orvid::Element root = ko::Orvid::parse(subjects->document.text);
                keep(&root);
            }};
}

Group readGroup(const Shared& subjects, bool isMimalloc) {
    Group group = groupOf("read", subjects, [&](Subjects::Subject& subject) {
        return Job{subject.peer.name, [subjects, read = subject.peer.read] {
                       keep(read(subjects->document.text).get());
                   }};
    });
    group.jobs.push_back({k_pass, [subjects] { passOver(subjects->document.text); }});
    group.jobs.push_back(strictJob(subjects));
    const std::string& document = subjects->document.name;
    if (!isMimalloc) {
        group.limit("Boost.JSON", 0.8);
        group.limit("RapidJSON", isCoordinates(document) ? 1.15 : 1);
        group.bars.push_back({"orvid, strict", "orvid", 1.1});
    } else if (isCorpus(document)) {
        group.limit(k_pass, passLimit(document));
    }
    group.verify = [subjects] { verifyRead(*subjects); };
    return group;
}

using SharedElement = std::shared_ptr<const ko::Orvid::Element>;

Job compactJob(const SharedElement& root) {
    return {k_compact, [root] {
                const auto options = ko::Orvid::WriteOptions::compact();
                const std::string text = ko::Orvid::Generator(nullptr, options).encode(*root);
                keep(&text);
            }};
}

/// Compact too, but the tree is checked first: whether JSON can express it.
Job serializeJob(const SharedElement& root) {
    return {"orvid, serialize()", [root] {
                const std::string text = ko::Orvid::serialize(*root);
                keep(&text);
            }};
}

Job streamJob(const SharedElement& root) {
    return {"orvid, to a stream", [root] {
                CountingBuffer buffer;
                std::ostream out(&buffer);
                out << *root;
                keep(&buffer);
            }};
}

SharedElement elementOf(const std::string& text) {
    auto root = std::make_shared<ko::Orvid::Element>();
    ko::Orvid::DomParser().parse(*root, text);
    return root;
}

/// Writes a tree that was never written, as the other libraries' trees count as.
Job firstWriteJob(const Shared& subjects, const Peer& peer) {
    const auto fresh = std::make_shared<std::unique_ptr<Tree>>();
    return {peer.name,
            [fresh] {
                const std::size_t length = (*fresh)->write();
                keep(&length);
            },
            [subjects, fresh, read = peer.read] { *fresh = read(subjects->document.text); }};
}

Job writeJob(const Shared& subjects, const Subjects::Subject& subject) {
    const std::string buffer = subject.peer.keepsBuffer ? ", buffer kept" : "";
    return {subject.peer.name + buffer, [subjects, &subject] {
                const std::size_t length = subject.tree->write();
                keep(&length);
            }};
}

Group writeGroup(const Shared& subjects) {
    Group group = groupOf("write", subjects, [&](const Subjects::Subject& subject) {
        return writeJob(subjects, subject);
    });
    for (const auto& subject : subjects->all) {
        if (subject.peer.keepsBuffer) {
            group.jobs.push_back(firstWriteJob(subjects, subject.peer));
        }
    }
    group.jobs.push_back({k_gen, [subjects] {
                              const std::size_t length = subjects->tokens.write();
                              keep(&length);
                          }});
    const SharedElement root = elementOf(subjects->document.text);
    group.jobs.push_back(streamJob(root));
    group.jobs.push_back(compactJob(root));
    group.jobs.push_back(serializeJob(root));
    group.limit("RapidJSON", 1);
    group.bars.push_back({k_compact, "Boost.JSON", 1});
    group.verify = [subjects] { verifyWrite(*subjects); };
    return group;
}

Group editGroup(const Shared& subjects) {
    Group group = groupOf("read, edit, write", subjects, [&](Subjects::Subject& subject) {
        return Job{subject.peer.name, [subjects, read = subject.peer.read] {
                       const auto tree = read(subjects->document.text);
                       tree->edit();
                       const std::size_t length = tree->write();
                       keep(&length);
                   }};
    });
    group.limit("Boost.JSON", 1);
    group.verify = [subjects] { verifyEdit(*subjects); };
    return group;
}

Group copyGroup(const Shared& subjects) {
    Group group = groupOf("copy", subjects, [&](Subjects::Subject& subject) {
        const auto copy = std::make_shared<std::unique_ptr<Tree>>();
        return Job{subject.peer.name, [subjects, &subject, copy] { *copy = subject.tree->copy(); },
                   [copy] { copy->reset(); }};
    });
    group.limit("Boost.JSON", 1);
    group.verify = [subjects] { verifyCopy(*subjects); };
    return group;
}

Job compareJob(const Shared& subjects, const Subjects::Subject& subject) {
    const std::shared_ptr<Tree> copy = subject.tree->copy();
    return {subject.peer.name, [subjects, &subject, copy] {
                if (!copy->equals(*subject.tree)) {
                    throw std::logic_error(subject.peer.name + ": the copy differs");
                }
            }};
}

Group compareGroup(const Shared& subjects) {
    Group group{"compare", subjects->document.name, {}};
    for (const auto& subject : subjects->all) {
        if (subject.peer.canCompare(subjects->document.widest)) {
            group.jobs.push_back(compareJob(subjects, subject));
        }
    }
    group.limit("ordered_json", 1);
    group.verify = [subjects] { verifyCopy(*subjects); };
    return group;
}

Group destroyGroup(const Shared& subjects) {
    Group group = groupOf("destroy", subjects, [&](Subjects::Subject& subject) {
        const auto copy = std::make_shared<std::unique_ptr<Tree>>();
        return Job{
            subject.peer.name, [copy] { copy->reset(); },
            [subjects, copy, read = subject.peer.read] { *copy = read(subjects->document.text); }};
    });
    group.limit("Boost.JSON", 1);
    return group;
}

}  // namespace

std::vector<Group> documentGroups(const Document& document, bool isMimalloc) {
    const auto subjects = std::make_shared<Subjects>(document);
    std::vector<Group> result{readGroup(subjects, isMimalloc), writeGroup(subjects)};
    if (document.text.front() == '{') {
        result.push_back(editGroup(subjects));
    }
    result.push_back(copyGroup(subjects));
    result.push_back(compareGroup(subjects));
    result.push_back(destroyGroup(subjects));
    return result;
}

}  // namespace orvid_bench
