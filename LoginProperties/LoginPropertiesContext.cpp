#include "LoginProperties/LoginPropertiesContext.h"

LoginPropertiesContext& GetContext() {
  static LoginPropertiesContext context;
  return context;
}
