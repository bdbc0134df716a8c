#pragma once

#include "tavik/managed/managed_method.h"
#include "tavik/type/managed_object_type.h"
#include "tavik/type/type_of.h"
#include "tests/support/recording_adapter.h"

#include <gtest/gtest.h>

/// Makes stubs, and looks at what each call of one has sent.
class AsyncCaller {
public:
    template <class Interface, class Stub>
    Pellum::Ref<Stub> Begin() {
        m_type = Tavik::GetMoType<Interface>();
        const auto reference = Pellum::MakeRef<Tavik::MoRef>(&m_type->GetInfo(), "id");
        return Pellum::MakeRef<Stub>(reference.Get(), m_adapter.Get(), nullptr);
    }

    /// After each call, all of whose arguments were empty. `constant` is the name of a method, null for a
    /// getter.
    void Check(std::size_t index, std::size_t parameterCount, const char* constant) {
        const Tavik::ManagedMethod& method = *m_type->GetMethodObjects().at(index);
        SCOPED_TRACE(std::string(m_type->GetName()) + "." + method.GetName());
        EXPECT_EQ(m_adapter->count, ++m_count);
        EXPECT_EQ(m_adapter->method, &method);
        EXPECT_EQ(m_adapter->completion, &completion);
        EXPECT_EQ(m_adapter->item, &item);
        ASSERT_EQ(m_adapter->arguments.size(), parameterCount);
        ASSERT_EQ(constant == nullptr, method.IsPropertyGetter());
        if (constant == nullptr) {
            return;
        }
        EXPECT_EQ(constant, std::string(m_type->GetName()) + "." + method.GetName());
        const Tavik::PropertyDescriptor* row = method.GetMethodDescriptor()->parameters;
        for (const auto& argument : m_adapter->arguments) {
            const bool isScalar =
                row->type->kind <= Tavik::TypeKind::PropertyPath || row->type->kind == Tavik::TypeKind::Enum;
            EXPECT_EQ(argument != nullptr, isScalar && !row->IsArray() && !row->IsOptional()) << row->name;
            ++row;
        }
        EXPECT_EQ(row->name, nullptr);
    }

    int GetCount() const { return m_count; }

    const Tavik::Completion completion;
    Pellum::Ref<Pellum::System::ScheduledItem> item;

private:
    const Tavik::ManagedObjectType* m_type = nullptr;
    const Pellum::Ref<TestSupport::RecordingAdapter> m_adapter =
        Pellum::MakeRef<TestSupport::RecordingAdapter>();
    int m_count = 0;
};

/// Calls everything that the interface has; generated.
void CallAll(AsyncCaller& caller);
