#pragma once

/// An object that is created on first use and lives to the end of the module. For what singletons themselves need.
template <typename T>
class SimpleSingleton {
 public:
  static T& Get() {
    static T instance;
    return instance;
  }
};
