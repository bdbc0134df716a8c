#include "tavik/fault/runtime_faults.h"
#include "tavik/rpc/object_table.h"

#include "tavik/type/managed_object_type.h"
#include "tests/rpc/desk.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

/// A printer of the base type, which nobody calls.
class PlainPrinter final : public Tavik::ServerObject {
public:
    PlainPrinter(const Tavik::TypeInfo& type, std::string id) : ServerObject(type, std::move(id)) {}

    Tavik::ManagedObjectType* _GetType() const override { return Tavik::GetMoType<Desk::Printer>(); }
};

const Tavik::ManagedObjectType& Root() {
    return static_cast<const Tavik::ManagedObjectType&>(*Tavik::GetBuiltinType(Tavik::TypeKind::Managed));
}

TEST(ObjectTableTest, FindsObjectsByTheirTypeAndItsBases) {
    const auto table = Pellum::MakeRef<Tavik::ObjectTable>();
    const Pellum::Ref<TestPrinter> photo(new TestPrinter("1"));
    const Pellum::Ref<PlainPrinter> plain(new PlainPrinter(Desk::gDeskPrinterTypeInfo, "2"));
    table->Register(*photo);
    table->Register(*plain);
    const auto& printerType = *Tavik::GetMoType<Desk::Printer>();
    const auto& photoType = *Tavik::GetMoType<Desk::PhotoPrinter>();
    EXPECT_EQ(table->Find(photoType, "1"), photo.Get());
    EXPECT_EQ(table->Find(printerType, "1"), photo.Get());
    EXPECT_EQ(table->Find(Root(), "1"), photo.Get());
    EXPECT_EQ(table->Find(printerType, "2"), plain.Get());
    EXPECT_EQ(table->Find(photoType, "2"), nullptr);
    EXPECT_EQ(table->Find(printerType, "3"), nullptr);
    EXPECT_EQ(photo->GetRefCount(), 2);

    EXPECT_FALSE(photo->IsUnregistered());
    EXPECT_TRUE(table->Unregister(Tavik::MoRef(&Desk::gDeskPrinterTypeInfo, "1")));
    EXPECT_TRUE(photo->IsUnregistered());
    EXPECT_EQ(photo->GetRefCount(), 1);
    EXPECT_FALSE(table->Unregister(*photo));
    table->Clear();
    EXPECT_TRUE(plain->IsUnregistered());
    EXPECT_EQ(table->Find(printerType, "2"), nullptr);
}

TEST(ObjectTableTest, RefusesWhatCouldNotBeFound) {
    const auto table = Pellum::MakeRef<Tavik::ObjectTable>();
    const auto refuses = [&](Tavik::ManagedObject* object) {
        const Pellum::Ref<Tavik::ManagedObject> kept(object);
        EXPECT_THROW(table->Register(*object), Pellum::Exception);
    };
    const Pellum::Ref<TestPrinter> printer(new TestPrinter("1"));
    table->Register(*printer);
    refuses(printer.Get());
    refuses(new TestPrinter("1"));
    refuses(new PlainPrinter(Desk::gDeskPrinterTypeInfo, "1")); // found as a Printer, too
    refuses(new TestPrinter(""));
    refuses(new PlainPrinter(Desk::gDeskPhotoPrinterTypeInfo, "2")); // it is none
    EXPECT_EQ(table->Find(*Tavik::GetMoType<Desk::Printer>(), "1"), printer.Get());
}

TEST(ObjectTableTest, StubsLearnThatTheirObjectIsGone) {
    Desktop desk;
    const auto stub = desk.Connect();
    const auto early = desk.Connect(); // as the base type
    const auto other = Pellum::MakeRef<Desk::PrinterStub>(
        Pellum::MakeRef<Tavik::MoRef>(&Desk::gDeskPrinterTypeInfo, "1").Get(), desk.adapter.Get(), nullptr);
    { const auto gone = desk.Connect(); }
    stub->Reset();
    other->Reset();
    desk.objects->Unregister(*desk.printer);
    EXPECT_THROW(stub->Reset(), Orlin::Fault::ManagedObjectNotFound::Exception);
    EXPECT_THROW(other->Reset(), Orlin::Fault::ManagedObjectNotFound::Exception);
    EXPECT_THROW(desk.Connect()->Reset(), Orlin::Fault::ManagedObjectNotFound::Exception);
    EXPECT_EQ(desk.printer->runs, 2);
}

} // namespace
