#pragma once

#include <zk/export.h>

#include <stdexcept>

// The few conditions that are raised rather than shown. what() is the text for the user, word for word.
namespace zk {

/// The general exception ("Normalvektor 0", "stack error", ...).
class ZKXYZ_API EError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A text that is not the number or point it should be.
class ZKXYZ_API EConvertError : public EError {
  public:
    using EError::EError;
};

/// An index outside a list.
class ZKXYZ_API EListError : public EError {
  public:
    using EError::EError;
};

}  // namespace zk
