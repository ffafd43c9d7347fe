// Filled by the model layer.
