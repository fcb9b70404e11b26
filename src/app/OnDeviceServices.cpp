#include "OnDeviceServices.h"

#include "ApertiumTranslation.h"
#include "PhraseMemory.h"

#include <memory>
#include <utility>
#include <vector>

namespace lucentra {

namespace {

/// The most trusted first: what a program's own translators wrote goes before what a machine composes.
std::vector<std::unique_ptr<OnDeviceTranslationService>> layers(PhraseStore &store)
{
    std::vector<std::unique_ptr<OnDeviceTranslationService>> layers;
    layers.push_back(std::make_unique<PhraseMemory>(store));
    layers.push_back(ApertiumTranslation::ofThisSystem());
    return layers;
}

} // namespace

OnDeviceServices::OnDeviceServices(MainQueue &mainQueue, BuildPatience patience)
    : store(CatalogueFolders::ofThisSystem(), PhraseStore::userCachePath(), patience)
    , identifier([this] { return store.file(); })
    , service(layers(store))
    , bridge(identifier, service, mainQueue)
{
}

OnDeviceServices::~OnDeviceServices()
{
    store.cancel(); // or else the bridge would wait for those who wait for the memory
}

} // namespace lucentra
