// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/DisplayJson.h"
#include "app/cli/Verb.h"
#include "base/MemoryUserDefaults.h"
#include "base/NextEmission.h"
#include "displays/DisplayStore.h"

namespace lumenvale {

namespace {

/// Prints the displays as they are, and then a line for each change. The desktop program tells of them where it
/// runs, so that the monitors are read once for both; elsewhere they are read here, as often as that program
/// would.
class Watch {
public:
    Watch(VerbContext& context, std::string wanted, bool asJson)
        : context(context), wanted(std::move(wanted)), asJson(asJson)
    {
        if (context.program)
            context.program->observe([this](const auto& displays) { programChanged(displays); });
        else
            readHere();
    }
    ~Watch() { context.clock.cancel(ending); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    Signal<> ended; ///< `status` is known; never from within a store's notification
    int status = exitDone;

private:
    void programChanged(const std::optional<std::string>& text)
    {
        if (text == unknownDisplays) { // it will tell
            store.reset();
            return;
        }
        const auto displays = text ? displaysFromJson(*text) : std::nullopt;
        if (!displays)
            return readHere();
        store.reset();
        show(*displays);
    }

    void readHere()
    {
        if (store)
            return;
        store.emplace(context.hardware, noPreferences, context.screens, context.events, context.clock);
        observation = store->displays.subscribe([this](const auto& displays) { show(displays); });
        store->startMonitoring();
        store->requestRefresh();
    }

    void show(const std::vector<DisplayInfo>& displays)
    {
        const auto chosen = choose(displays);
        if (!chosen && shown.empty()) {
            context.err << chosen.error() << '\n';
            end(exitUnknown);
            return;
        }
        const std::vector<DisplayInfo> present = chosen.value_or(std::vector<DisplayInfo>());
        for (const DisplayInfo& display : present)
            showOne(display);
        for (const auto& [id, display] : std::map(shown)) {
            if (!findDisplay(present, id))
                showOne(disconnected(display));
        }
        context.out.flush();
        if (!context.out)
            end(exitDone); // whoever read the lines has gone
    }

    /// Once chosen, a display stays the one, whatever others are called.
    tl::expected<std::vector<DisplayInfo>, std::string> choose(const std::vector<DisplayInfo>& displays)
    {
        if (!chosenID.empty())
            return chooseDisplays(displays, chosenID); // an error while it is away
        auto chosen = chooseDisplays(displays, wanted);
        if (chosen && wanted != allDisplays)
            chosenID = chosen->front().id;
        return chosen;
    }

    static DisplayInfo disconnected(DisplayInfo display)
    {
        display.brightness.reset();
        display.error.reset();
        display.status = "Not connected.";
        return display;
    }

    void showOne(const DisplayInfo& display)
    {
        const auto last = shown.find(display.id);
        const bool isNews =
            last == shown.end() ||
            (asJson ? display != last->second : percentageText(display) != percentageText(last->second));
        shown[display.id] = display;
        if (!isNews)
            return;
        if (asJson)
            context.out << displayAsJson(display) << '\n';
        else
            context.out << (wanted == allDisplays ? display.name + ": " : "") << percentageText(display) << '\n';
    }

    void end(int newStatus)
    {
        status = newStatus;
        if (ending == 0)
            ending = context.clock.callAfter(Clock::Duration(0), [this] { ended.emit(); });
    }

    VerbContext& context;
    std::string wanted;
    bool asJson;
    std::string chosenID;                     ///< empty while there is none, and for all
    std::map<std::string, DisplayInfo> shown; ///< as they were printed last, by identifier
    Clock::TimerId ending = 0;
    MemoryUserDefaults noPreferences;  ///< the order of the displays is not this command's to save
    std::optional<DisplayStore> store; ///< while the displays are read here
    Subscription observation;
};

Task<int> runWatch(VerbContext& context, ArgumentValues values)
{
    const std::string wanted = values.text(displayArgument().name);
    Watch watch(context, wanted.empty() ? allDisplays : wanted, values.has(jsonFlag().name));
    NextEmission end(watch.ended);
    co_await end;
    co_return watch.status;
}

} // namespace

Verb watchVerb()
{
    Argument display = displayArgument();
    display.isOptional = true;
    Argument json = jsonFlag();
    json.help = "Print every field of the display that changed, as JSON in one line";
    return {"watch", "Print displays' brightness, and a line at each change", {display, json}, runWatch};
}

} // namespace lumenvale
