#pragma once

#include "tavik/managed/async.h"
#include "tavik/managed/server_object.h"
#include "tavik/rpc/dispatcher.h"
#include "tavik/rpc/errors.h"
#include "tavik/rpc/in_process_adapter.h"
#include "tavik/rpc/server_call.h"
#include "tavik/type/version.h"
#include "tests/rpc/photo_printer.h"
#include "tests/rpc/photo_printer_stub.h"
#include "tests/rpc/sheet.h"

#include <atomic>
#include <functional>
#include <map>
#include <mutex>
#include <string>
#include <vector>

/// A server's printer, whose `act` does what a test has it do.
class TestPrinter final : public Desk::PhotoPrinter, public Tavik::ServerObject {
public:
    explicit TestPrinter(std::string id);

    std::string GetName() override;
    void GetQueue(Pellum::Ref<Tavik::DataArray<Desk::Sheet>>& result) override;
    /// Gives the number of copies, 1 unless given; the sheet is `lastSheet` then.
    std::int32_t Print(
        Desk::Sheet* sheet, const Pellum::Optional<std::int32_t>& copies, const std::string& pin) override;
    Pellum::Optional<std::string> Act(const std::string& what) override;
    void Echo(Desk::Sheet* sheet, Pellum::Ref<Desk::Sheet>& result) override;
    void Reset() override;
    std::string Scan(const Pellum::Optional<std::string>& mode) override;
    void Neighbour(Pellum::Ref<Tavik::MoRef>& result) override;
    std::int64_t Align(std::int32_t by) override;

    using Action = std::function<Pellum::Optional<std::string>(const std::string&)>;
    Action onAct;
    std::atomic<int> runs = 0;
    Pellum::Ref<Desk::Sheet> lastSheet;
};

/// A printer that is served, and an adapter to reach it by.
class Desktop {
public:
    explicit Desktop(Tavik::InProcessOptions options = {}, Tavik::AccessPolicy* policy = new Tavik::AllowAll);
    ~Desktop();

    /// A new stub of the printer.
    Pellum::Ref<Desk::PhotoPrinterStub> Connect(Tavik::RequestContext* context = nullptr) const;

    /// What the server was told of failures.
    std::vector<std::string> GetLog();

    Pellum::Ref<TestPrinter> printer;
    Pellum::Ref<Tavik::ObjectTable> objects;
    Pellum::Ref<Tavik::Dispatcher> server;
    Pellum::Ref<Tavik::InProcessAdapter> adapter;

private:
    std::mutex m_mutex;
    std::vector<std::string> m_log;
};

/// A context with a deadline so many milliseconds from now.
Pellum::Ref<Tavik::RequestContext> Within(int milliseconds);
/// One of that API version.
Pellum::Ref<Tavik::RequestContext> Speaking(const char* version);

/// A door that threads wait at until it is opened.
class Gate {
public:
    void Open();
    void Wait();
    /// False when nobody came within a few seconds.
    bool AwaitVisitor();

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_isOpen = false;
    bool m_isVisited = false;
};
