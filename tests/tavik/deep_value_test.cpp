#include "tavik/type/type_registry.h"
#include "tavik/value/compare.h"
#include "tavik/value/print.h"
#include "tavik/value/property_diff_set.h"
#include "tavik/value/validate.h"
#include "tests/sample/api/node.h"
#include "tests/support/small_stack.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Pellum::MakeRef;
using Pellum::Ref;
using Sample::Node;

constexpr int kDepth = 100'000;

/// How one level of a tree holds the next.
enum class Link { Object, Array, AnyType, Mixed };

void Hang(Node& parent, Node* child, Link link, int level) {
    if (link == Link::Mixed) {
        link = static_cast<Link>(level % 3);
    }
    switch (link) {
    case Link::Array: parent.GetChildren()->Append(child); break;
    case Link::AnyType: parent.SetAny(child); break;
    default: parent.SetN(child); break;
    }
}

/// A chain of nodes; the innermost one has the label.
Ref<Node> MakeChain(int depth, Link link, const std::string& label) {
    auto chain = MakeRef<Node>();
    chain->SetLabel(label);
    for (int level = 1; level < depth; ++level) {
        auto parent = MakeRef<Node>();
        Hang(*parent, chain.Get(), link, level);
        chain = parent;
    }
    return chain;
}

class DeepValue : public testing::TestWithParam<Link> {};

TEST_P(DeepValue, IsDestroyed) {
    TestSupport::RunOnSmallStack([] { MakeChain(kDepth, GetParam(), "end"); });
}

TEST_P(DeepValue, IsClonedAndCompared) {
    TestSupport::RunOnSmallStack([] {
        const Ref<Node> chain = MakeChain(kDepth, GetParam(), "end");
        const Ref<Node> clone(chain->_Clone());
        EXPECT_TRUE(chain->_IsEqual(clone.Get(), false));
        EXPECT_TRUE(Tavik::AreEqualAnysInt(chain.Get(), clone.Get(), 0, true));
        const Ref<Node> other = MakeChain(kDepth, GetParam(), "another end");
        EXPECT_FALSE(chain->_IsEqual(other.Get(), false));
        EXPECT_FALSE(Tavik::AreEqualAnysInt(clone.Get(), other.Get(), 0, false));
        // The pattern has no label: it matches as such, and the other way round it does not.
        const Ref<Node> pattern = MakeChain(kDepth, GetParam(), "");
        Node* end = pattern.Get();
        while (end->GetN() != nullptr || end->IsSetChildren() || end->GetAny() != nullptr) {
            end = end->GetN() != nullptr   ? end->GetN()
                : end->GetAny() != nullptr ? static_cast<Node*>(end->GetAny())
                                           : (*end->GetChildren())[0];
        }
        end->UnsetLabel();
        EXPECT_TRUE(chain->_IsEqual(pattern.Get(), true));
        EXPECT_FALSE(pattern->_IsEqual(chain.Get(), true));
    });
}

TEST_P(DeepValue, IsPrintedAndValidated) {
    Tavik::TypeRegistry::Instance().Load();
    TestSupport::RunOnSmallStack([] {
        const Ref<Node> chain = MakeChain(kDepth, GetParam(), "\xFF");
        const std::string text = chain->ToString();
        EXPECT_NE(text.find("\"label\": \"\xEF\xBF\xBD\"}"), std::string::npos);
        EXPECT_GT(text.size(), std::size_t{kDepth} * 6);
        const auto problems = Tavik::Validate(chain.Get());
        ASSERT_EQ(problems.size(), 1U);
        EXPECT_TRUE(problems[0].path.ends_with("label"));
    });
}

TEST_P(DeepValue, IsDiffed) {
    // The path alone grows to the depth times the length of a name, and is made anew on every level: fewer
    // levels.
    constexpr int depth = 10'000;
    TestSupport::RunOnSmallStack([] {
        const Ref<Node> a = MakeChain(depth, GetParam(), "one end");
        const Ref<Node> b = MakeChain(depth, GetParam(), "another end");
        Tavik::PropertyDiffSet diffs;
        a->_DiffProperties(b.Get(), "", diffs);
        ASSERT_EQ(diffs.GetSize(), 1U);
        EXPECT_TRUE(diffs[0].ends_with(".label"));
        EXPECT_GT(diffs[0].size(), std::size_t{depth} * 2);
    });
}

std::string NameOf(const testing::TestParamInfo<Link>& link) {
    constexpr const char* kNames[] = {"Object", "Array", "AnyType", "Mixed"};
    return kNames[static_cast<int>(link.param)];
}

INSTANTIATE_TEST_SUITE_P(
    Links, DeepValue, testing::Values(Link::Object, Link::Array, Link::AnyType, Link::Mixed), &NameOf);

/// Two deep branches at every tenth level, so that work that was put off holds work that is put off again.
Ref<Node> MakeBranches(int depth, int& count) {
    Ref<Node> tree = MakeRef<Node>();
    for (int level = 0; level < depth; ++level) {
        auto parent = MakeRef<Node>();
        parent->SetN(tree.Get());
        parent->SetLabel(std::to_string(count++));
        if (level % 10 == 0) {
            for (int i = 0; i < 2; ++i) {
                const Ref<Node> branch = MakeChain(100, Link::Mixed, std::to_string(count++));
                parent->GetChildren()->Append(branch.Get());
            }
        }
        tree = parent;
    }
    return tree;
}

TEST(DeepValueBranches, AreAllVisited) {
    int labels = 0;
    const Ref<Node> tree = MakeBranches(1000, labels);
    const Ref<Node> clone(tree->_Clone());
    EXPECT_TRUE(tree->_IsEqual(clone.Get(), false));
    EXPECT_EQ(tree->ToString(), clone->ToString());

    int others = labels; // all labels differ
    const Ref<Node> other = MakeBranches(1000, others);
    Tavik::PropertyDiffSet diffs;
    tree->_DiffProperties(other.Get(), "", diffs);
    EXPECT_EQ(diffs.GetSize(), static_cast<std::size_t>(labels));
}

} // namespace
